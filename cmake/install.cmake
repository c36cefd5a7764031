# Installs what games use: the library, its headers, its CMake package and its pkg-config file. All paths in them are
# relative, so that the installation can be relocated.
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

# The packaging function for games is installed too.
install(FILES cmake/package.cmake DESTINATION ${package_dir} COMPONENT development)
install(DIRECTORY packaging DESTINATION ${package_dir} COMPONENT development)

# Called by lumarind_package: adds the library's package to the demonstration's.
function(lumarind_package_library)
    _lumarind_documents(liblumarind-dev development)
    set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME liblumarind-dev)
    set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
    string(
        CONCAT depends "libsdl3-dev (>= 3.4), libsdl3-ttf-dev (>= 3.2), libsdl3-image-dev (>= 3.2), "
               "libsdl3-mixer-dev (>= 3.2), libinih-dev, libpugixml-dev, libyyjson-dev, zlib1g-dev, pkgconf")
    set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS ${depends})
    set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
        "Static library and headers for small 2D games on SDL3
Main loop with fixed steps, screens, input actions, gamepads, text, sprites,
tile maps, collisions, audio, settings, captures and replays, for games in
C++20. It comes with a CMake package, a pkg-config file, and a CMake function
that makes packages of a game.")
    list(APPEND CPACK_COMPONENTS_ALL development)
    return(PROPAGATE CPACK_COMPONENTS_ALL CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION
                     CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION)
endfunction()

if(LUMARIND_PROGRAM)
    lumarind_package(
        TARGET LumarindEngine
        ID lumarind-engine
        NAME "Lumarind Engine"
        SUMMARY "Small 2D game engine on SDL3, shown in ten screens"
        DESCRIPTION
            "The demonstration of a game engine: a castle to play in, and screens about text, pictures, tile maps, \
sprites, input, gamepads, audio, logical resolutions and physics."
        ASSETS ${PROJECT_SOURCE_DIR}/assets
        LICENCE ${PROJECT_SOURCE_DIR}/LICENSE
        LICENCE_NAME MIT
        CHANGES ${PROJECT_SOURCE_DIR}/CHANGELOG.md
        OWN_FOLDER)
endif()
