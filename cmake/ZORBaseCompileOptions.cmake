# What every target of this project is compiled with.
add_library(zorbase_compile_options INTERFACE)
target_compile_features(zorbase_compile_options INTERFACE cxx_std_20)

if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
  # Results are the same bits on every machine: no contraction to fused multiply-add, no reordering of sums.
  target_compile_options(zorbase_compile_options INTERFACE
    -ffp-contract=off -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # GCC 12 warns of overlapping and overlong copies inside std::string where there are none (GCC bugs 105651, 105329).
    target_compile_options(zorbase_compile_options INTERFACE -Wno-restrict -Wno-array-bounds)
  endif()
  # That a loop did not become vectors, as under a sanitizer, is a matter of speed and no mistake.
  target_compile_options(zorbase_compile_options INTERFACE $<$<CXX_COMPILER_ID:Clang,AppleClang>:-Wno-pass-failed>)
  if(ZORBASE_WERROR)
    target_compile_options(zorbase_compile_options INTERFACE -Werror)
  endif()
endif()

if(ZORBASE_SANITIZE)
  target_compile_options(zorbase_compile_options INTERFACE
    -fsanitize=${ZORBASE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(zorbase_compile_options INTERFACE -fsanitize=${ZORBASE_SANITIZE})
endif()

if(ZORBASE_COVERAGE)
  target_compile_options(zorbase_compile_options INTERFACE --coverage -fprofile-update=atomic)
  # Of a kernel's variants only one runs on a machine, and what is inlined is many lines: kernels/TargetClones.h.
  target_compile_definitions(zorbase_compile_options INTERFACE ZORBASE_COUNTS_LINES)
  target_link_options(zorbase_compile_options INTERFACE --coverage)
endif()
