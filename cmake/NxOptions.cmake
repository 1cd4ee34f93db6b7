# Flags of every target of this project.
#
# nx_options: what the results depend on, and what the sanitizers need in every part of a program.
# nx_warnings: the warnings that the project's own sources are kept free of; never seen by those who link the library.

add_library(nx_options INTERFACE)
target_compile_features(nx_options INTERFACE cxx_std_20)
# A decimal's digits are the same at every optimisation level and on every processor: each step through a double is
# rounded by itself.
target_compile_options(nx_options INTERFACE -ffp-contract=off)
if(NOT NX_SANITIZE)
  target_compile_options(nx_options INTERFACE -fstack-protector-strong $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=2>)
  target_compile_definitions(nx_options INTERFACE _GLIBCXX_ASSERTIONS)
else()
  target_compile_options(nx_options INTERFACE -fsanitize=${NX_SANITIZE} -fno-omit-frame-pointer)
  target_link_options(nx_options INTERFACE -fsanitize=${NX_SANITIZE})
  if(NX_SANITIZE MATCHES "undefined")
    target_compile_options(nx_options INTERFACE -fsanitize=float-cast-overflow -fno-sanitize-recover=all)
    target_link_options(nx_options INTERFACE -fsanitize=float-cast-overflow)
  endif()
  if(NX_FUZZ)
    target_compile_options(nx_options INTERFACE -fsanitize=fuzzer-no-link) # tells the fuzzer which branches were taken
  endif()
endif()

add_library(nx_warnings INTERFACE)
target_compile_options(
  nx_warnings
  INTERFACE -Wall
            -Wextra
            -Wpedantic
            -Wshadow
            -Wconversion
            -Wsign-conversion
            -Wold-style-cast
            -Woverloaded-virtual
            -Wcast-align
            -Wcast-qual
            -Wformat=2
            -Wundef
            $<$<CXX_COMPILER_ID:GNU>:-Wlogical-op>
            # g++ 12 sees overlaps in every "text" + std::string (GCC bug 105329).
            $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
            $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond>
            # Enumerations are values with virtual operations, not meant to be deleted through their base; a container
            # of them destroys them as the class that they are.
            $<$<CXX_COMPILER_ID:Clang>:-Wno-delete-non-abstract-non-virtual-dtor>
            $<$<BOOL:${NX_WERROR}>:-Werror>)
