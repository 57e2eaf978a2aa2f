# Run as a script by the test package.deb: makes the packages, unpacks them below a folder and uses what is
# there: the command, its pages and completion, programs with pkg-config and CMake.
cmake_minimum_required(VERSION 3.25)
set(root ${WORK}/root)
unset(ENV{CORVANE_DATA})
unset(ENV{LD_LIBRARY_PATH})
set(ENV{LC_ALL} C)
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${root})

# expect(<what it matches> <command>...): the output has a part that matches, or a fatal error.
function(expect pattern)
  execute_process(
    COMMAND ${ARGN}
    WORKING_DIRECTORY /
    OUTPUT_VARIABLE out
    ERROR_VARIABLE err
    RESULT_VARIABLE code)
  if(NOT code EQUAL 0 OR NOT out MATCHES "${pattern}")
    message(FATAL_ERROR "${ARGN}: ${code}, not '${pattern}' in\n${out}\n${err}")
  endif()
endfunction()

expect("corvane_${VERSION}_" ${SOURCE}/scripts/deb ${BUILD} ${WORK}/packages)
file(GLOB packages ${WORK}/packages/*.deb)
list(LENGTH packages count)
if(NOT count EQUAL 5)
  message(FATAL_ERROR "packages: ${packages}")
endif()
foreach(package IN LISTS packages)
  expect("^${VERSION}\n$" dpkg-deb -f ${package} Version)
  expect("" dpkg-deb -x ${package} ${root})
endforeach()
# What depends on what: the program on the library of this version, that on its data and the C library.
expect("libcorvane${ABI} \\(= ${VERSION}\\)" dpkg-deb -f ${WORK}/packages/corvane_${VERSION}_${ARCHITECTURE}.deb Depends)
set(library ${WORK}/packages/libcorvane${ABI}_${VERSION}_${ARCHITECTURE}.deb)
expect("corvane-data \\(= ${VERSION}\\), libc6 " dpkg-deb -f ${library} Depends)
expect("libcorvane ${ABI} libcorvane${ABI}.*libnumelo ${ABI} " dpkg-deb -I ${library} shlibs)

# The command, and a page for it and for each of its commands, which a formatter reads without complaint.
set(corvane ${root}/usr/bin/corvane)
expect("substance carbon_dioxide.*280 " ${corvane} saturation PR CO2 --T 280)
file(GLOB pages ${root}/usr/share/man/man1/corvane*.1.gz)
execute_process(COMMAND ${corvane} --help OUTPUT_VARIABLE help)
string(REGEX REPLACE "^.*Subcommands:|Examples:.*$" "" help "${help}")
string(REGEX MATCHALL "\n  [a-z-]+" commands "${help}")
foreach(command IN LISTS commands)
  string(STRIP "${command}" command)
  set(page ${root}/usr/share/man/man1/corvane-${command}.1.gz)
  if(NOT page IN_LIST pages)
    message(FATAL_ERROR "no page for corvane ${command}")
  endif()
endforeach()
if(MAN)
  foreach(page IN LISTS pages)
    execute_process(COMMAND ${MAN} --warnings -l ${page} OUTPUT_VARIABLE text ERROR_VARIABLE complaints)
    if(NOT complaints STREQUAL "" OR NOT text MATCHES "NAME\n.*SYNOPSIS\n.*OPTIONS\n.*EXIT STATUS\n")
      message(FATAL_ERROR "${page}: ${complaints}\n${text}")
    endif()
  endforeach()
endif()

# Completion: words of a line, and what the last of them becomes.
function(completes line expected)
  set(script "source $0; COMP_WORDS=(${line}); COMP_CWORD=$((\${#COMP_WORDS[@]} - 1)); _corvane
printf '<%s>' \"\${COMPREPLY[@]}\"")
  execute_process(
    COMMAND ${CMAKE_COMMAND} -E env PATH=${root}/usr/bin:$ENV{PATH} bash -c "${script}"
            ${root}/usr/share/bash-completion/completions/corvane
    OUTPUT_VARIABLE out COMMAND_ERROR_IS_FATAL ANY)
  if(NOT out STREQUAL expected)
    message(FATAL_ERROR "${line}: ${out}")
  endif()
endfunction()
completes("corvane sat" "<saturation>")
completes("corvane flash --unit-h kc" "<kcal/mol><kcal/kg>")
completes("corvane state --phase st" "<stable>")
completes("corvane bubble PR+v" "<PR+vdW1>")
completes("corvane bubble PR+vdW1 sulfur_hexa" "<sulfur_hexafluoride>")
completes("corvane state CO2 --T 3" "<>")
if(ZSH)
  expect("" ${ZSH} -n ${root}/usr/share/zsh/site-functions/_corvane)
endif()

# Programs against what was unpacked.
set(flags -std=c++20 ${SOURCE}/examples/consumer/main.cpp -o ${WORK}/consumer -Wl,-rpath,${root}/usr/lib)
if(PKG_CONFIG)
  set(ENV{PKG_CONFIG_PATH} ${root}/usr/lib/pkgconfig)
  expect("^${VERSION}\n" ${PKG_CONFIG} --modversion corvane)
  execute_process(COMMAND ${PKG_CONFIG} --cflags --libs corvane OUTPUT_VARIABLE needed
                  OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  separate_arguments(needed)
  expect("" ${CXX} ${flags} ${needed})
  execute_process(COMMAND ${WORK}/consumer WORKING_DIRECTORY ${root}/usr/lib/corvane OUTPUT_VARIABLE out)
  if(NOT out MATCHES "p_sat 4.1597 MPa")
    message(FATAL_ERROR "consumer: ${out}")
  endif()
endif()
expect("" ${CMAKE_COMMAND} -S ${root}/usr/share/doc/corvane/examples/vdw_plugin -B ${WORK}/plugin -G Ninja
       -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_PREFIX_PATH=${root}/usr)
expect("" ${CMAKE_COMMAND} --build ${WORK}/plugin)
file(COPY ${root}/usr/share/doc/corvane/examples/vdw_plugin/parameters/
     DESTINATION ${WORK}/plugin/CorvaneS/parameters/vdw)
expect("eos vdw  substance argon" ${corvane} saturation vdw argon --T 120 --home ${WORK}/plugin)
