# CPack's project configuration, read once per generator: selects the install components and the prefix.
if(CPACK_GENERATOR STREQUAL "DEB")
    list(REMOVE_ITEM CPACK_COMPONENTS_ALL portable)
    set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
    unset(CPACK_PACKAGE_DESCRIPTION_SUMMARY) # each package's description starts with its own
else()
    set(CPACK_COMPONENTS_ALL portable)
    set(CPACK_PACKAGING_INSTALL_PREFIX /)
    set(CPACK_COMPONENT_INCLUDE_TOPLEVEL_DIRECTORY ON)
endif()
