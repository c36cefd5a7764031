# Everything the project builds on, by find_package; inih has no CMake package and is found by pkg-config.
find_package(SDL3 3.4 REQUIRED CONFIG)
find_package(SDL3_ttf 3.2 REQUIRED CONFIG)
find_package(SDL3_image 3.2 REQUIRED CONFIG)
find_package(PkgConfig REQUIRED)
pkg_check_modules(INIH REQUIRED IMPORTED_TARGET inih)
if(LUMARIND_BENCHMARKS)
    find_package(benchmark REQUIRED)
endif()
if(LUMARIND_TESTS)
    find_package(GTest REQUIRED)
endif()

# The physics screen is written against Box2D's version 3 interface: lumarind_box2d is version 3 itself where it is
# found, and on version 2.4 this project's layer.
find_package(box2d REQUIRED CONFIG)
add_library(lumarind_box2d INTERFACE)
if(box2d_VERSION VERSION_LESS 3)
    add_subdirectory(compat/box2d)
    target_link_libraries(lumarind_box2d INTERFACE box2d_layer)
else()
    target_link_libraries(lumarind_box2d INTERFACE box2d::box2d)
endif()
