# Run as a script by the test package.nuget: packs, unpacks, and runs the sample with what was unpacked
# in "/".
cmake_minimum_required(VERSION 3.25)
unset(ENV{CORVANE_DATA})
unset(ENV{LD_LIBRARY_PATH})
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK}/unpacked)

# run(<result variable> <command>...): output, or a fatal error with it.
function(run result)
  execute_process(
    COMMAND ${ARGN}
    WORKING_DIRECTORY /
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

# sample(<folder> <LD_LIBRARY_PATH>): the sample finds library, plug-ins and data.
function(sample folder path)
  run(table ${CMAKE_COMMAND} -E env LD_LIBRARY_PATH=${path} ${MONO} ${folder}/Sample.exe)
  if(NOT table MATCHES "280\\.0 +4\\.1597 .*no second phase")
    message(FATAL_ERROR "${folder}: ${table}")
  endif()
endfunction()

run(package ${SOURCE}/scripts/nuget ${BUILD} ${WORK}/package)
set(package ${WORK}/package/Corvane.${VERSION}.nupkg)
execute_process(COMMAND ${CMAKE_COMMAND} -E tar xf ${package} WORKING_DIRECTORY ${WORK}/unpacked
                COMMAND_ERROR_IS_FATAL ANY)
file(READ ${WORK}/unpacked/Corvane.nuspec nuspec)
if(NOT nuspec MATCHES "<version>${VERSION}</version>")
  message(FATAL_ERROR "version: ${nuspec}")
endif()
# Every part has a content type, and those without extension one of their own.
file(READ "${WORK}/unpacked/[Content_Types].xml" types)
foreach(part IN ITEMS "Default Extension=\"so\"" "PartName=\"/content/corvane/CorvaneS/parameters/PR/methane;1\"")
  string(FIND "${types}" "${part}" at)
  if(at EQUAL -1)
    message(FATAL_ERROR "no content type: ${part}")
  endif()
endforeach()

# Folders as builds with the package leave them: libraries beside the program for Mono, in runtimes/ for
# .NET, whose host looks there (here the variable does, which Mono needs).
set(parts ${BUILD}/dotnet/Sample.exe ${WORK}/unpacked/lib/netstandard2.0/Corvane.dll
          ${WORK}/unpacked/content/corvane)
file(COPY ${parts} ${WORK}/unpacked/runtimes/linux-x64/native/ DESTINATION ${WORK}/mono)
sample(${WORK}/mono "")
file(COPY ${parts} ${WORK}/unpacked/runtimes DESTINATION ${WORK}/host)
sample(${WORK}/host ${WORK}/host/runtimes/linux-x64/native)
