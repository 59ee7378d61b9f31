# What a build decides. Each value reaches the code through one generated header, BuildSettings.h.
set(QUILLMERE_BUNDLE_ID "chat.quillmere.mac.local" CACHE STRING
    "Identity of the program; a release sets chat.quillmere.mac")
set(QUILLMERE_API_URL "" CACHE STRING
    "Default address of the service; empty means the local service on 127.0.0.1:4310")
set(QUILLMERE_ACCOUNT_ORIGIN "https://account.quillmere.chat" CACHE STRING
    "Origin of the account pages")
set(QUILLMERE_PUBLIC_SITE "https://quillmere.chat" CACHE STRING
    "Origin of the public pages and of the downloads")
set(QUILLMERE_SUFFIX_FOIBLE ".fail" CACHE STRING "Domain suffix of the archive foible")
set(QUILLMERE_SUFFIX_LUMEN ".ink" CACHE STRING "Domain suffix of the archive lumen")
set(QUILLMERE_SUFFIX_SHIFT ".run" CACHE STRING "Domain suffix of the archive shift")
set(QUILLMERE_SUFFIX_DEFAULT ".works" CACHE STRING "Domain suffix of every other archive")
set(QUILLMERE_BUILD_NUMBER 4 CACHE STRING "Build number beside the version")

# Secrets are sent there, and compared with what comes back from there. Plain HTTP is for a service on
# this machine.
if(NOT QUILLMERE_ACCOUNT_ORIGIN MATCHES "^(https://|http://(localhost|127[.]0[.]0[.]1)(:|$))[^/?#@]*$")
    message(FATAL_ERROR "QUILLMERE_ACCOUNT_ORIGIN must be https:// and a host: "
                        "${QUILLMERE_ACCOUNT_ORIGIN}")
endif()

configure_file(${CMAKE_SOURCE_DIR}/cmake/BuildSettings.h.in
               ${CMAKE_BINARY_DIR}/generated/BuildSettings.h @ONLY)
add_library(build_settings INTERFACE)
target_include_directories(build_settings INTERFACE ${CMAKE_BINARY_DIR}/generated)
