# Options of this project's own targets; they never reach the libraries or a game.
add_library(lumarind_options INTERFACE)
target_compile_features(lumarind_options INTERFACE cxx_std_20)
if(NOT MSVC)
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
