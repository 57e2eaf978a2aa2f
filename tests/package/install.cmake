# Run as a script by the test package.install; any failing step ends it.
cmake_minimum_required(VERSION 3.25)
set(prefix ${WORK}/prefix)
set(home ${prefix}/lib/corvane)
file(REMOVE_RECURSE ${WORK})
unset(ENV{CORVANE_DATA})
unset(ENV{LD_LIBRARY_PATH})

# run(<result variable> <working directory> <command>...): output, or a fatal error with it.
function(run result folder)
  execute_process(
    COMMAND ${ARGN}
    WORKING_DIRECTORY ${folder}
    OUTPUT_VARIABLE out
    ERROR_VARIABLE err
    RESULT_VARIABLE code)
  if(NOT code EQUAL 0)
    message(FATAL_ERROR "${ARGN}: ${code}\n${out}\n${err}")
  endif()
  set(${result}
      "${out}"
      PARENT_SCOPE)
endfunction()

# expect(<text> <part>): the text holds the part.
function(expect text part)
  string(FIND "${text}" "${part}" at)
  if(at EQUAL -1)
    message(FATAL_ERROR "'${part}' is not in:\n${text}")
  endif()
endfunction()

# build(<example> [<source>]): configures and builds examples/<example>, or another project, with nothing
# but the prefix.
function(build example)
  set(source ${SOURCE}/examples/${example})
  if(ARGC GREATER 1)
    set(source ${ARGV1})
  endif()
  set(flags "")
  if(SANITIZE)
    string(APPEND flags " -fsanitize=${SANITIZE}")
  endif()
  if(COVERAGE)
    string(APPEND flags " --coverage")
  endif()
  run(ignored ${WORK} ${CMAKE_COMMAND} -S ${source} -B ${WORK}/${example} -G Ninja
      -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_COMPILER=${CXX} "-DCMAKE_CXX_FLAGS=${flags}"
      -DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER} -DCMAKE_PREFIX_PATH=${prefix})
  run(ignored ${WORK} ${CMAKE_COMMAND} --build ${WORK}/${example})
endfunction()

run(ignored ${SOURCE} ${CMAKE_COMMAND} --install ${BUILD} --prefix ${prefix})

# Every plug-in of the build tree is there, mixtures that share a library with their equation, too.
file(GLOB built RELATIVE ${BUILD}/home/CorvaneS ${BUILD}/home/CorvaneS/libth*.dll)
file(GLOB installed RELATIVE ${home}/CorvaneS ${home}/CorvaneS/libth*.dll)
if(NOT built OR NOT built STREQUAL installed)
  message(FATAL_ERROR "plug-ins: built ${built}\ninstalled ${installed}")
endif()
run(table / ${prefix}/bin/corvane bubble CPA+vdW1 methanol=0.5 water=0.5 --T 330)
expect("${table}" "CPA+vdW1")

# The program finds its data home from where it lies, in whatever directory it is started.
run(version / ${prefix}/bin/corvane --version)
expect("${version}" "corvane ")
run(table / ${prefix}/bin/corvane saturation PR CO2 --T 280)
expect("${table}" "substance carbon_dioxide")

# A program that uses the package, in the data home; README shows it and what it prints.
build(consumer)
run(result ${home} ${WORK}/consumer/consumer)
file(READ ${SOURCE}/examples/consumer/main.cpp program)
file(READ ${SOURCE}/README.md readme)
expect("${readme}" "${program}")
string(STRIP "${result}" line)
expect("${readme}" "${line}")

# A fit by a program of its own.
if(EXISTS ${prefix}/lib/libcorvane_fit.a)
  build(fit)
  run(result / ${WORK}/fit/hexane ${SOURCE}/examples/fit/hexane.csv)
  expect("${result}" "m = 3.0693")
endif()

# The function interface from C.
build(c_interface)
run(result ${home} ${WORK}/c_interface/c_interface)
expect("${result}" "p_sat ")

# Certified calculations from C, in any directory.
build(c_certified)
run(result / ${WORK}/c_certified/c_certified)
expect("${result}" "water (MEOS)")
expect("${result}" "no solution at T = 400 K")

# The installed assembly and sample.
if(MONO)
  run(table / ${MONO} ${home}/dotnet/Sample.exe)
  expect("${table}" "no second phase")
endif()

# A plug-in that was built out of tree works beside the others. Critical point of the equation: Zc =
# 3/8, so that its set for argon (Tc = 150.687 K) has no saturation state at 151 K, but one at 120 K.
build(vdw_plugin)
file(COPY ${WORK}/vdw_plugin/CorvaneS/libthvdw.dll DESTINATION ${home}/CorvaneS)
file(COPY ${SOURCE}/examples/vdw_plugin/parameters/ DESTINATION ${home}/CorvaneS/parameters/vdw)
run(list ${home} ${prefix}/bin/corvane list)
expect("${list}" "vdw (1 substances, 1 sets)")
run(table ${home} ${prefix}/bin/corvane saturation vdw argon --T 120)
expect("${table}" "eos vdw  substance argon  set 1")
execute_process(
  COMMAND ${prefix}/bin/corvane saturation vdw argon --T 151
  RESULT_VARIABLE code
  ERROR_VARIABLE text)
expect("${code} ${text}" "1 corvane: saturation: vdw argon at T = 151 K is not below the critical")

# A project that the program writes builds as it is, passes its own tests and computes.
run(ignored ${WORK} ${prefix}/bin/corvane new-equation ${WORK}/mine)
# It compiles fast: it includes none of the models and no container.
run(headers ${WORK} ${CXX} -std=c++20 -M -I${prefix}/include ${WORK}/mine/equation.cpp)
expect("${headers}" "corvane/plugin/formula.h")
foreach(slow IN ITEMS /model1.h /modeln.h /string /vector /memory /algorithm /functional)
  if(headers MATCHES "${slow}[ \n]")
    message(FATAL_ERROR "the source of a new equation includes ${slow}:\n${headers}")
  endif()
endforeach()
build(mine/build ${WORK}/mine)
run(ignored ${WORK} ctest --test-dir ${WORK}/mine/build --output-on-failure)
run(table / ${prefix}/bin/corvane saturation mine argon --T 120 --home ${WORK}/mine/build)
expect("${table}" "eos mine  substance argon  set 1")
