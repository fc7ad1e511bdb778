# The warnings of all our own code; each of them is an error. Headers of other projects are included as system headers.
# GCC 12 raises -Wrestrict wrongly inside std::string's operator+ (its bug 105651).
add_library(house_warnings INTERFACE)
target_compile_options(house_warnings INTERFACE
    $<$<COMPILE_LANGUAGE:C,CXX>:-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror>
    $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-restrict>)
