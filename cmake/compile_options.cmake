# Compile options of this project's targets; not propagated to dependencies or games.
add_library(lumarind_options INTERFACE)
target_compile_features(lumarind_options INTERFACE cxx_std_20)
if(NOT MSVC)
    # Replays must be bit-identical across compilers, optimisation levels and processors: multiplications and additions
    # must not be fused. Otherwise IEEE arithmetic in SSE registers is deterministic. Simulations do not call C library
    # functions whose last digit may differ, such as the sine, except for SDL_cos rounded to whole pixels (the platforms
    # of Cinder Keep).
    target_compile_options(lumarind_options INTERFACE -ffp-contract=off)
    target_compile_options(lumarind_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
    if(LUMARIND_WARNINGS_AS_ERRORS)
        target_compile_options(lumarind_options INTERFACE -Werror)
    endif()
endif()
if(LUMARIND_SANITIZE)
    target_compile_options(
        lumarind_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(lumarind_options INTERFACE -fsanitize=address,undefined)
elseif(LUMARIND_TESTS)
    # Without the other sanitizers, an array index out of bounds ends the tests all the same: checking it costs little.
    include(CheckCXXCompilerFlag)
    check_cxx_compiler_flag("-fsanitize=bounds -fsanitize-trap=bounds" LUMARIND_BOUNDS_TRAP)
    if(LUMARIND_BOUNDS_TRAP)
        target_compile_options(lumarind_options INTERFACE -fsanitize=bounds -fsanitize-trap=bounds)
    endif()
endif()
if(LUMARIND_FUZZERS)
    target_compile_options(lumarind_options INTERFACE -fsanitize=fuzzer-no-link) # coverage counters
endif()
