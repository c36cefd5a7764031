# What a game takes: the library, its headers, its CMake package and its pkg-config file. All paths in them are relative
# to where they lie, so that the whole may be moved after it was installed.
include(CMakePackageConfigHelpers)
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/lumarind)

install(
    TARGETS lumarind_engine
    EXPORT lumarind_targets
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT unused EXCLUDE_FROM_ALL)
install(FILES ${PROJECT_BINARY_DIR}/include/lumarind/lumarind.h ${PROJECT_BINARY_DIR}/include/lumarind/version.h
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/lumarind COMPONENT development)
install(EXPORT lumarind_targets NAMESPACE lumarind:: DESTINATION ${package_dir} COMPONENT development)

configure_package_config_file(
    cmake/lumarind-config.cmake.in ${PROJECT_BINARY_DIR}/lumarind-config.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/lumarind-config-version.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/lumarind-config.cmake ${PROJECT_BINARY_DIR}/lumarind-config-version.cmake
        DESTINATION ${package_dir} COMPONENT development)

cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_INCLUDEDIR BASE_DIRECTORY ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig
           OUTPUT_VARIABLE pc_includedir)
configure_file(cmake/lumarind.pc.in ${PROJECT_BINARY_DIR}/lumarind.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/lumarind.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

if(LUMARIND_PROGRAM)
    install(TARGETS LumarindEngine DESTINATION . COMPONENT program)
    install(DIRECTORY assets DESTINATION . COMPONENT program)
endif()
