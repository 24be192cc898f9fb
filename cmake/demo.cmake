# The demo: runs vlnogui on a fresh copy of the example project the way a new
# user would, with the distribution staged in the build tree, shows what the
# run changed, creates the shop's database and lets a real web server
# (lighttpd) serve the pages and the program that the run built, asking it
# for a search and an order with curl.
#
# Variables: VLNOGUI (the program), SOURCE_DIR (the source tree), DIST_DIR
# (the staged distribution), DEMO_DIR (a scratch directory in the build tree,
# emptied first).
set(example ${SOURCE_DIR}/examples/shop)
set(dist ${DIST_DIR})
set(project ${DEMO_DIR}/shop)

# The web part needs two system packages; say so before anything runs.
find_program(LIGHTTPD lighttpd PATHS /usr/sbin /sbin)
find_program(CURL curl)
if(NOT LIGHTTPD OR NOT CURL)
  message(FATAL_ERROR "The demo serves the shop with lighttpd and asks it with curl; "
                      "install them first: apt-get install lighttpd curl")
endif()

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
if(NOT EXISTS ${DEMO_DIR}/cgi-bin/shop.cgi)
  message(FATAL_ERROR "vlinst.sh did not build and install shop.cgi (see its messages above)")
endif()

# The example is the engine's own output, so nothing but the working copies
# (in_use/), the backup (velmoraBack*/), the run's lock file and what the
# build made should differ.
find_program(DIFF diff)
if(DIFF)
  execute_process(
    COMMAND ${DIFF} -r -x in_use -x "velmoraBack*" -x "*.lock" -x "*.o" -x shop.cgi ${example} ${project}
    RESULT_VARIABLE same OUTPUT_VARIABLE changes)
  if(same EQUAL 0)
    message(STATUS "The run changed no file of the example (backup in ${project}/velmoraBackshop)")
  else()
    message(STATUS "What the run changed:\n${changes}")
  endif()
else()
  message(STATUS "diff not found: compare ${example} with ${project} yourself")
endif()
message(STATUS "Pages installed in ${DEMO_DIR}/www/shop, the program in ${DEMO_DIR}/cgi-bin")

message(STATUS "Creating the shop's database ${DEMO_DIR}/cgi-bin/shop.db from shop.sql")
execute_process(COMMAND ${dist}/bin/vlsql ${DEMO_DIR}/cgi-bin/shop.db ${example}/shop.sql
                RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "vlsql could not create the database")
endif()

execute_process(COMMAND sh ${SOURCE_DIR}/cmake/demo_serve.sh ${DEMO_DIR} ${dist}/bin/vlsql
                RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "Serving the shop failed")
endif()
