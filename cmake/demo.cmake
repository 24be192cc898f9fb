# The demo: runs vlnogui on a fresh copy of the example project the way a new
# user would, with the bundled distribution, and shows what the run changed.
#
# Variables: VLNOGUI (the program), SOURCE_DIR (the source tree), DEMO_DIR
# (a scratch directory in the build tree, emptied first).
set(example ${SOURCE_DIR}/examples/shop)
set(dist ${SOURCE_DIR}/dist)
set(project ${DEMO_DIR}/shop)

file(REMOVE_RECURSE ${DEMO_DIR})
file(MAKE_DIRECTORY ${DEMO_DIR}/home)
file(COPY ${example} DESTINATION ${DEMO_DIR})

message(STATUS "Running vlnogui on a copy of the example in ${project}")
execute_process(
  COMMAND ${CMAKE_COMMAND} -E env
    VELMORA=${dist} "PATH=${dist}/bin:$ENV{PATH}" HOME=${DEMO_DIR}/home
    ${VLNOGUI} -p ${project}/shop.pj -c ${project}/test.cfg
  WORKING_DIRECTORY ${DEMO_DIR}
  RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "vlnogui ended with status ${status}")
endif()

# The example is the engine's own output, so nothing but the working copies
# (in_use/) and the backup (velmoraBack*/) should differ.
find_program(DIFF diff)
if(DIFF)
  execute_process(
    COMMAND ${DIFF} -r -x in_use -x "velmoraBack*" ${example} ${project}
    RESULT_VARIABLE same OUTPUT_VARIABLE changes)
  if(same EQUAL 0)
    message(STATUS "The run changed no file of the example (backup in ${project}/velmoraBackshop)")
  else()
    message(STATUS "What the run changed:\n${changes}")
  endif()
else()
  message(STATUS "diff not found: compare ${example} with ${project} yourself")
endif()
message(STATUS "Pages installed in ${DEMO_DIR}/www/shop")
