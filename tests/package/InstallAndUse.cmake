# One STEP of the library's way into another program. All of them build main.cpp, which prints the middle of a path.
#   install         installs the build tree BUILD, moves the result, and looks through it
#   find-package    links the library, shared and static, by find_package
#   pkg-config      the same by PKG_CONFIG
#   add-subdirectory   builds the library as a part of another project
# SCRATCH is the steps' folder; SOURCE, GENERATOR, COMPILER and FLAGS are those of the build tree, VERSION is the library's.
# SHARED is ON when the build tree has a shared library beside the static one.
cmake_minimum_required(VERSION 3.25)
set(installed ${SCRATCH}/moved/to/another/place)
set(kinds static)
if(SHARED)
  set(kinds shared static)
endif()
list(GET kinds 0 usual_kind)

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE errors)
  if(NOT status STREQUAL "0")
    message(FATAL_ERROR "${ARGN} ended with ${status}\n${output}${errors}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

function(expect found expected what)
  if(NOT found STREQUAL expected)
    message(FATAL_ERROR "${what}: found '${found}', expected '${expected}'")
  endif()
endfunction()

# Runs a build of main.cpp: on a straight path of 30 it prints the pose at 15. KIND says which library it must have taken.
function(use program kind)
  get_filename_component(folder ${program} DIRECTORY)
  file(WRITE ${folder}/part.txt "0,0,0,0,0,1\n10,0,0,0,0,1\n20,0,0,0,0,1\n30,0,0,0,0,1\n")
  execute_process(COMMAND ${program} WORKING_DIRECTORY ${folder} OUTPUT_VARIABLE output)
  expect("${output}" "15.000,0.000,0.000,0.000,0.000,1.000\n" ${program})
  file(STRINGS ${program} shared REGEX "libZORBase\\.so")
  if((kind STREQUAL "shared") EQUAL (shared STREQUAL ""))
    message(FATAL_ERROR "${program} should have taken the ${kind} library")
  endif()
endfunction()

function(configure source build)
  run(${CMAKE_COMMAND} -G ${GENERATOR} -S ${source} -B ${build} -DCMAKE_CXX_COMPILER=${COMPILER} "-DCMAKE_CXX_FLAGS=${FLAGS}"
    ${ARGN})
endfunction()

# A copy of the installed tree without the shared library.
function(make_static_tree tree)
  file(COPY ${installed}/ DESTINATION ${tree})
  file(GLOB_RECURSE shared ${tree}/libZORBase.so* ${tree}/ZORBase-shared-targets*.cmake)
  if(SHARED)
    list(LENGTH shared count)
    expect(${count} 5 "the shared library, its two links and its two descriptions in ${installed}")
    file(REMOVE ${shared})
  endif()
endfunction()

# ------------------------------------------------------------------------------------------------- the steps

function(step_install)
  file(REMOVE_RECURSE ${SCRATCH})
  run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${SCRATCH}/staged)
  get_filename_component(parent ${installed} DIRECTORY)
  file(MAKE_DIRECTORY ${parent})
  file(RENAME ${SCRATCH}/staged ${installed})

  file(GLOB_RECURSE texts ${installed}/*.cmake ${installed}/*.pc ${installed}/*.h)
  foreach(text IN LISTS texts)
    file(READ ${text} contents)
    foreach(place IN ITEMS ${BUILD} ${SOURCE} ${SCRATCH})
      string(FIND "${contents}" ${place} at)
      expect(${at} -1 "${text} must not name ${place}")
    endforeach()
  endforeach()

  if(EXISTS ${installed}/bin/zor)
    run(${installed}/bin/zor --version)
    expect("${output}" "zor ${VERSION}\n" "the moved command")
  endif()
endfunction()

function(step_find_package)
  set(build ${SCRATCH}/find-package)
  configure(${CMAKE_CURRENT_LIST_DIR} ${build} -DCMAKE_PREFIX_PATH=${installed} -DSHARED=${SHARED})
  run(${CMAKE_COMMAND} --build ${build})
  foreach(kind IN LISTS kinds)
    use(${build}/${kind}/uses_${kind} ${kind})
  endforeach()
  use(${build}/any/uses_any ${usual_kind})
endfunction()

function(step_pkg_config)
  foreach(kind IN LISTS kinds)
    set(tree ${installed})
    set(switch "")
    if(kind STREQUAL "static")
      set(tree ${SCRATCH}/static-tree)
      set(switch --static)
      make_static_tree(${tree})
    endif()
    file(GLOB_RECURSE pc ${tree}/zorbase.pc)
    get_filename_component(folder ${pc} DIRECTORY)
    set(ENV{PKG_CONFIG_PATH} ${folder})
    run(${PKG_CONFIG} --modversion zorbase)
    expect("${output}" "${VERSION}\n" "pkg-config --modversion")
    run(${PKG_CONFIG} --cflags --libs ${switch} zorbase)
    separate_arguments(options UNIX_COMMAND "${output}")
    separate_arguments(flags UNIX_COMMAND "${FLAGS}")
    run(${PKG_CONFIG} --variable=libdir zorbase)
    string(STRIP "${output}" libdir)

    set(build ${SCRATCH}/pkg-config/${kind})
    file(MAKE_DIRECTORY ${build})
    run(${COMPILER} -std=c++20 ${flags} ${CMAKE_CURRENT_LIST_DIR}/main.cpp -o ${build}/uses_zorbase ${options})
    set(ENV{LD_LIBRARY_PATH} ${libdir})
    use(${build}/uses_zorbase ${kind})
  endforeach()
endfunction()

# Unoptimised, and many sources in one go: what counts here is that everything fits together.
function(step_add_subdirectory)
  set(build ${SCRATCH}/add-subdirectory)
  configure(${CMAKE_CURRENT_LIST_DIR}/subproject ${build} -DCMAKE_BUILD_TYPE= -DCMAKE_UNITY_BUILD=ON -DZORBASE_SOURCE=${SOURCE})
  run(${CMAKE_COMMAND} --build ${build} --parallel 2)
  use(${build}/uses_subproject static)
endfunction()

string(REPLACE "-" "_" step ${STEP})
cmake_language(CALL step_${step})
