add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wunused -Werror)
if(NOT APPLE)
    # A library that nothing is used of would still be loaded at each start.
    add_link_options(-Wl,--as-needed)
endif()
add_compile_definitions(QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_NO_KEYWORDS
                        QT_DISABLE_DEPRECATED_BEFORE=0x060400)

# The JSON parser has a fast path for these instructions, which machines have had since about 2010;
# without them it takes several times as long.
if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64" AND NOT APPLE)
    add_compile_options(-march=x86-64-v2 -mpclmul)
endif()

if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    add_compile_options(-Wno-unknown-warning-option)
    if(NOT APPLE)
        # The linker of the compiler's own version: an older one cannot read its link-time code.
        get_filename_component(compiler_folder ${CMAKE_CXX_COMPILER} REALPATH)
        get_filename_component(compiler_folder ${compiler_folder} DIRECTORY)
        find_program(QUILLMERE_LINKER ld.lld HINTS ${compiler_folder} NO_DEFAULT_PATH REQUIRED)
        add_link_options(--ld-path=${QUILLMERE_LINKER})
    endif()
endif()

option(QUILLMERE_SANITIZE "Address and undefined-behaviour sanitizers" OFF)
if(QUILLMERE_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all
                        -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
    # The vptr check needs type information that Qt's libraries of the distribution do not export.
    if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
        add_compile_options(-fno-sanitize=vptr,function
                            -fsanitize-ignorelist=${CMAKE_SOURCE_DIR}/cmake/sanitizer-ignore.txt)
        add_link_options(-fno-sanitize=vptr,function)
    endif()
endif()

set(QUILLMERE_CLANG_TIDY "" CACHE STRING "The clang-tidy to run on the programs' sources, if any")
