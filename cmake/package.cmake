# lumarind_package(TARGET program ...): packages a game: adds install rules for the usual folders and configures CPack
# for `cpack -G DEB` (a Debian package) and `cpack -G TXZ` (a portable archive). Call it once, at the end of the
# top-level project; it does nothing in a subproject and on systems other than Linux.
# docs/packaging.md explains the arguments.
#
# Packages are reproducible: their contents depend only on the source. All timestamps are SOURCE_DATE_EPOCH, which
# `./dev package` sets to the time of the last commit.
if(EXISTS ${CMAKE_CURRENT_LIST_DIR}/packaging) # installed
    set(LUMARIND_PACKAGING ${CMAKE_CURRENT_LIST_DIR}/packaging CACHE INTERNAL "")
else()
    cmake_path(SET LUMARIND_PACKAGING NORMALIZE ${CMAKE_CURRENT_LIST_DIR}/../packaging)
    set(LUMARIND_PACKAGING ${LUMARIND_PACKAGING} CACHE INTERNAL "")
endif()

function(lumarind_package)
    cmake_parse_arguments(
        PARSE_ARGV 0 arg "OWN_FOLDER"
        "TARGET;ID;NAME;SUMMARY;DESCRIPTION;HOMEPAGE;APP_ID;MAINTAINER;ASSETS;ICONS;LICENCE;LICENCE_NAME;CHANGES" "")
    if(NOT PROJECT_IS_TOP_LEVEL OR NOT CMAKE_SYSTEM_NAME STREQUAL "Linux")
        return()
    endif()
    if(arg_UNPARSED_ARGUMENTS OR NOT TARGET "${arg_TARGET}")
        message(FATAL_ERROR "lumarind_package: no such argument or TARGET: ${arg_UNPARSED_ARGUMENTS} ${arg_TARGET}")
    endif()
    set(program ${arg_TARGET})
    _lumarind_default(ID ${program})
    _lumarind_default(NAME ${arg_ID})
    _lumarind_default(SUMMARY "${PROJECT_DESCRIPTION}" "Game made with Lumarind Engine")
    _lumarind_default(DESCRIPTION "${arg_NAME} is a 2D game that needs neither a network nor a graphics card.")
    _lumarind_default(ICONS ${LUMARIND_PACKAGING}/icons)
    _lumarind_default(LICENCE_NAME LicenseRef-proprietary)
    _lumarind_default(MAINTAINER "$ENV{DEBFULLNAME} <$ENV{DEBEMAIL}>")
    if(NOT arg_MAINTAINER MATCHES "^[^<]+ <[^<]+@[^<]+>$")
        set(arg_MAINTAINER "${arg_NAME} contributors <nobody@${arg_ID}.invalid>") # an address that cannot exist
    endif()
    set(version ${PROJECT_VERSION})
    if(NOT version)
        set(version 0.1.0)
    endif()
    if(NOT arg_ID MATCHES "^[a-z][a-z0-9-]+$")
        message(FATAL_ERROR "lumarind_package: an ID consists of lower-case letters, digits and dashes: ${arg_ID}")
    endif()
    # Software centres require an identifier that contains a domain, and for applications a homepage.
    string(REPLACE - _ undashed ${arg_ID})
    _lumarind_default(APP_ID invalid.${undashed}.${undashed})
    _lumarind_default(HOMEPAGE "${PROJECT_HOMEPAGE_URL}")
    set(kind generic)
    set(homepage "")
    if(arg_HOMEPAGE)
        set(kind desktop-application)
        set(homepage "\n  <url type=\"homepage\">${arg_HOMEPAGE}</url>")
    endif()
    _lumarind_read_changes("${arg_CHANGES}")
    if(NOT arg_LICENCE)
        set(arg_LICENCE ${PROJECT_BINARY_DIR}/packaging/LICENCE)
        string(TIMESTAMP year "%Y" UTC)
        file(CONFIGURE OUTPUT ${arg_LICENCE} CONTENT "Copyright (c) ${year} ${arg_NAME} contributors\n\nAll rights reserved.\n")
    endif()
    set(generated ${PROJECT_BINARY_DIR}/packaging)

    # The program and its assets. If it reads assets in the current folder, a launcher creates that folder.
    set(of_program COMPONENT program)
    install(DIRECTORY ${arg_ASSETS}/ DESTINATION share/${arg_ID}/assets ${of_program})
    if(arg_OWN_FOLDER)
        install(TARGETS ${program} DESTINATION lib/${arg_ID} ${of_program})
        _lumarind_launcher(installed ../lib/${arg_ID}/${program} "")
        install(PROGRAMS ${generated}/installed DESTINATION games RENAME ${arg_ID} ${of_program})
        file(CREATE_LINK ../../share/${arg_ID}/assets ${generated}/assets SYMBOLIC)
        install(FILES ${generated}/assets DESTINATION lib/${arg_ID} ${of_program})
        set(files_folder "~/.local/share/${arg_ID}")
    else()
        if(NOT arg_ID STREQUAL program)
            message(FATAL_ERROR "lumarind_package: without OWN_FOLDER the ID must be the executable's name, ${program}")
        endif()
        install(TARGETS ${program} DESTINATION games ${of_program})
        set(files_folder "the folder that its log names first, below ~/.local/share")
    endif()

    # Metadata for desktops, software centres and `man`.
    configure_file(${LUMARIND_PACKAGING}/game.desktop.in ${generated}/${arg_ID}.desktop @ONLY)
    install(FILES ${generated}/${arg_ID}.desktop DESTINATION share/applications ${of_program})
    foreach(text IN ITEMS NAME SUMMARY DESCRIPTION)
        string(REPLACE "&" "&amp;" xml_${text} "${arg_${text}}")
        string(REPLACE "<" "&lt;" xml_${text} "${xml_${text}}")
    endforeach()
    configure_file(${LUMARIND_PACKAGING}/metainfo.xml.in ${generated}/${arg_APP_ID}.metainfo.xml @ONLY)
    install(FILES ${generated}/${arg_APP_ID}.metainfo.xml DESTINATION share/metainfo ${of_program})
    file(GLOB icons CONFIGURE_DEPENDS ${arg_ICONS}/*.png) # named by size in pixels
    foreach(icon IN LISTS icons)
        cmake_path(GET icon STEM size)
        install(FILES ${icon} DESTINATION share/icons/hicolor/${size}x${size}/apps RENAME ${arg_ID}.png ${of_program})
    endforeach()
    string(TOUPPER ${arg_ID} heading)
    string(REPLACE - \\- dashed ${arg_ID}) # keeps hyphens in names from becoming dashes
    configure_file(${LUMARIND_PACKAGING}/manual.6.in ${generated}/${arg_ID}.6 @ONLY)
    _lumarind_compress(${generated}/${arg_ID}.6)
    install(FILES ${generated}/${arg_ID}.6.gz DESTINATION share/man/man6 ${of_program})
    _lumarind_documents(${arg_ID} program)
    configure_file(${LUMARIND_PACKAGING}/lintian-overrides.in ${generated}/lintian-overrides @ONLY)
    install(FILES ${generated}/lintian-overrides DESTINATION share/lintian/overrides RENAME ${arg_ID} ${of_program})

    # The archive, with one top-level folder, is built by `cpack` only.
    set(of_portable COMPONENT portable EXCLUDE_FROM_ALL)
    install(TARGETS ${program} DESTINATION program ${of_portable})
    install(DIRECTORY ${arg_ASSETS}/ DESTINATION program/assets ${of_portable})
    execute_process(
        COMMAND getconf GNU_LIBC_VERSION OUTPUT_VARIABLE libc OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    string(REGEX MATCH "[0-9]+$" libc "${libc}")
    _lumarind_launcher(portable program/${program} "${libc}")
    install(PROGRAMS ${generated}/portable DESTINATION . RENAME ${arg_ID} ${of_portable})
    configure_file(${LUMARIND_PACKAGING}/portable-readme.in ${generated}/README @ONLY)
    install(FILES ${generated}/README ${arg_LICENCE} ${arg_CHANGES} ${arg_ICONS}/256.png DESTINATION . ${of_portable})
    install(CODE "set(program \"$<TARGET_FILE:${program}>\")" ${of_portable})
    install(SCRIPT ${LUMARIND_PACKAGING}/carry.cmake ${of_portable})

    set(CPACK_GENERATOR DEB TXZ)
    set(CPACK_PACKAGE_NAME ${arg_ID})
    set(CPACK_PACKAGE_VERSION ${version})
    set(CPACK_PACKAGE_CONTACT "${arg_MAINTAINER}")
    set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "${arg_HOMEPAGE}")
    set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
    set(CPACK_PACKAGE_FILE_NAME ${arg_ID}-${version}-linux-${CMAKE_SYSTEM_PROCESSOR}) # and the archive's folder
    set(CPACK_ARCHIVE_PORTABLE_FILE_NAME ${CPACK_PACKAGE_FILE_NAME})
    set(CPACK_STRIP_FILES ON)
    set(CPACK_THREADS 1) # the thread count affects the archive's bytes
    set(CPACK_DEB_COMPONENT_INSTALL ON)
    set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
    set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
    set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME ${arg_ID})
    set(CPACK_DEBIAN_PROGRAM_PACKAGE_SECTION games)
    set(CPACK_DEBIAN_PROGRAM_PACKAGE_SHLIBDEPS ON)
    _lumarind_wrap("${arg_DESCRIPTION}" "\n" wrapped)
    set(CPACK_DEBIAN_PROGRAM_DESCRIPTION "${arg_SUMMARY}\n${wrapped}")
    set(CPACK_PROJECT_CONFIG_FILE ${LUMARIND_PACKAGING}/cpack.cmake)
    set(CPACK_PRE_BUILD_SCRIPTS ${LUMARIND_PACKAGING}/settle.cmake)
    set(CPACK_COMPONENTS_ALL program portable)
    if(COMMAND lumarind_package_library) # in the engine's build
        lumarind_package_library()
    endif()
    include(CPack)
endfunction()

# _lumarind_default(NAME value...): sets a missing argument to the first value that is not empty
macro(_lumarind_default name)
    foreach(value ${ARGN})
        if(NOT arg_${name})
            set(arg_${name} "${value}")
        endif()
    endforeach()
endmacro()

# Reads the newest release of a changelog (keepachangelog.com), which must be the project's version.
macro(_lumarind_read_changes file)
    set(changes "  * Release ${version}.\n")
    string(TIMESTAMP release_date "%Y-%m-%d" UTC)
    if(NOT "${file}" STREQUAL "")
        file(READ ${file} text)
        if(NOT text MATCHES "\n## \\[([0-9.]+)\\] - ([0-9-]+)\n(.*)" OR NOT CMAKE_MATCH_1 STREQUAL version)
            message(FATAL_ERROR "the newest release in ${file} is ${CMAKE_MATCH_1}, the project's version ${version}")
        endif()
        set(release_date ${CMAKE_MATCH_2})
        string(REGEX REPLACE "\n(## |\\[).*" "" text "${CMAKE_MATCH_3}") # removes older releases and links
        string(REGEX REPLACE "### [^\n]*\n" "" text "${text}")
        string(REGEX REPLACE "\n  +" " " text "${text}") # joins the lines of an entry
        string(REPLACE ";" "${_lumarind_semicolon}" text "${text}") # semicolons would split the list
        string(REGEX MATCHALL "- [^\n]+" entries "${text}")
        set(changes "")
        foreach(entry IN LISTS entries)
            string(SUBSTRING "${entry}" 2 -1 entry)
            _lumarind_wrap("${entry}" "\n    " wrapped)
            string(APPEND changes "  * ${wrapped}\n")
        endforeach()
    endif()
endmacro()

# Every package contains its licence and changelog.
macro(_lumarind_documents package component)
    string(TIMESTAMP now "%a, %d %b %Y %H:%M:%S +0000" UTC)
    file(CONFIGURE OUTPUT ${generated}/${package}.changelog
         CONTENT "${package} (${version}) unstable; urgency=medium\n\n${changes}\n -- ${arg_MAINTAINER}  ${now}\n" @ONLY)
    _lumarind_compress(${generated}/${package}.changelog)
    install(FILES ${generated}/${package}.changelog.gz DESTINATION share/doc/${package} RENAME changelog.gz
            COMPONENT ${component})
    install(FILES ${arg_LICENCE} DESTINATION share/doc/${package} RENAME copyright COMPONENT ${component})
endmacro()

string(ASCII 31 _lumarind_semicolon) # placeholder for semicolons in strings used as lists
set(_lumarind_semicolon "${_lumarind_semicolon}" CACHE INTERNAL "")

function(_lumarind_wrap text break result) # wraps into lines of up to 74 characters, joined by `break`
    set(lines "")
    set(line "")
    string(REPLACE ";" "${_lumarind_semicolon}" text "${text}")
    string(REPLACE " " ";" words "${text}")
    foreach(word IN LISTS words)
        string(LENGTH "${line} ${word}" length)
        if(length GREATER 74)
            string(APPEND lines "${line}${break}")
            set(line "")
        endif()
        string(APPEND line " ${word}")
        string(STRIP "${line}" line)
    endforeach()
    string(REPLACE "${_lumarind_semicolon}" ";" lines "${lines}${line}")
    set(${result} "${lines}" PARENT_SCOPE)
endfunction()

macro(_lumarind_compress file)
    execute_process(COMMAND gzip -9nf ${file} COMMAND_ERROR_IS_FATAL ANY)
endmacro()

macro(_lumarind_launcher name program_path libc_minor)
    set(launched_program ${program_path})
    set(bundled_libc ${libc_minor})
    configure_file(${LUMARIND_PACKAGING}/launcher.in ${generated}/${name} @ONLY)
endmacro()
