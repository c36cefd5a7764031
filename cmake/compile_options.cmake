# Options of this project's own targets; they never reach the libraries or a game.
add_library(lumarind_options INTERFACE)
target_compile_features(lumarind_options INTERFACE cxx_std_20)
if(NOT MSVC)
    # Recordings are replayed to the bit by builds of every compiler, level and processor: a product and a sum are
    # rounded one by one, never fused. All else follows from IEEE arithmetic in SSE registers; simulations call no
    # function of the C library whose last digit may differ, such as the sine.
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
endif()
if(LUMARIND_FUZZERS)
    target_compile_options(lumarind_options INTERFACE -fsanitize=fuzzer-no-link) # counts what is reached
endif()
