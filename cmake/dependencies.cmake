# Everything the project builds on, by find_package; inih has no CMake package and is found by pkg-config.
find_package(SDL3 3.4 REQUIRED CONFIG)
find_package(SDL3_ttf 3.2 REQUIRED CONFIG)
find_package(SDL3_image 3.2 REQUIRED CONFIG)
find_package(PkgConfig REQUIRED)
pkg_check_modules(INIH REQUIRED IMPORTED_TARGET inih)
if(LUMARIND_TESTS)
    find_package(GTest REQUIRED)
endif()
