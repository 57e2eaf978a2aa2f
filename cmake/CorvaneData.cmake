# The data home of the build tree: links to the folders of the source tree, so that an edited data file
# is seen at once, beside real folders for what programs write.
set(data ${CMAKE_CURRENT_SOURCE_DIR}/CorvaneS)
file(MAKE_DIRECTORY ${CORVANE_BUILD_HOME}/CorvaneS ${CORVANE_BUILD_HOME}/models)
file(GLOB entries RELATIVE ${data} ${data}/*)
foreach(entry IN LISTS entries)
  file(CREATE_LINK ${data}/${entry} ${CORVANE_BUILD_HOME}/CorvaneS/${entry} SYMBOLIC)
endforeach()
if(EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/models/viscosity)
  file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR}/models/viscosity ${CORVANE_BUILD_HOME}/models/viscosity
       SYMBOLIC)
endif()
