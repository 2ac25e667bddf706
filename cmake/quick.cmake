# A build with tests is made to run them, once: what surrounds the bridge is compiled and linked as fast
# as it can be. The bridge and the platform's libraries are built as they are for everybody.
set(DTV_TESTS_FOLDER ${PROJECT_SOURCE_DIR}/tests)
option(DTV_UNITY "In a build with tests, compile several sources of what surrounds the bridge at once" ON)

# The options of a target that surrounds the bridge.
add_library(dtv_quick INTERFACE)
if(DTV_BUILD_TESTS)
  target_compile_options(dtv_quick INTERFACE -O0 -g1)
  # ccache takes precompiled headers of these kinds alone.
  target_compile_options(dtv_quick INTERFACE
    $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess> "$<$<CXX_COMPILER_ID:Clang>:SHELL:-Xclang -fno-pch-timestamp>")
  find_program(DTV_LLD ld.lld)
  # The cross compilers look for their own linker alone.
  if(DTV_LLD AND NOT CMAKE_CROSSCOMPILING)
    target_link_options(dtv_quick INTERFACE -fuse-ld=lld)
  endif()
endif()

# The code of the tests is watched for its addresses alone, which takes a third less time to compile.
add_library(dtv_quick_tests INTERFACE)
target_link_libraries(dtv_quick_tests INTERFACE dtv_quick)
if(DTV_SANITIZE MATCHES undefined)
  target_compile_options(dtv_quick_tests INTERFACE -fno-sanitize=undefined)
endif()

# dtv_quicken(<target>): gives a target these options, after those it has, and has its sources compiled
# together.
function(dtv_quicken target)
  cmake_path(IS_PREFIX DTV_TESTS_FOLDER ${CMAKE_CURRENT_SOURCE_DIR} is_test)
  if(is_test)
    target_link_libraries(${target} PRIVATE dtv_quick_tests)
  else()
    target_link_libraries(${target} PRIVATE dtv_quick)
  endif()
  if(DTV_BUILD_TESTS AND DTV_UNITY)
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 8)
  endif()
endfunction()
