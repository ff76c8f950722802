# Warnings are errors, here and in CI alike: a tree that warns does not build.
add_compile_options(-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
# GCC 12 takes the in-place buffer of a short string for uninitialised, or for overlapping itself, when it optimises;
# clang-tidy looks for the real things.
add_compile_options("$<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized;-Wno-restrict>")

if(TONQUAY_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()
