# Installs the build into a scratch prefix and checks what a user gets there:
# the layout, then a C program built against the installed package both ways,
# with find_package(Velmora) and with pkg-config, run and its output compared.
#
#   cmake -DBUILD_DIR=... -DSOURCE_DIR=... -DWORK_DIR=... -DC_COMPILER=...
#         -DVERSION=... -DVERSION_MAJOR=... [-DC_FLAGS=...] [-DLINK_FLAGS=...]
#         [-DGENERATOR=...] [-DBINDIR=bin -DLIBDIR=lib -DINCLUDEDIR=include
#         -DDATADIR=share -DMANDIR=share/man] -P package_test.cmake
#
# C_FLAGS and LINK_FLAGS are the flags the library was built with (the
# sanitizer build needs them on the programs that link it too).

foreach(var BUILD_DIR SOURCE_DIR WORK_DIR C_COMPILER VERSION VERSION_MAJOR)
  if(NOT ${var})
    message(FATAL_ERROR "package test: ${var} is not set")
  endif()
endforeach()
# The build's installation directories, relative to the prefix.
foreach(dir BINDIR:bin LIBDIR:lib INCLUDEDIR:include DATADIR:share MANDIR:share/man)
  string(REPLACE ":" ";" dir ${dir})
  list(GET dir 0 var)
  list(GET dir 1 default)
  if(NOT ${var})
    set(${var} ${default})
  endif()
endforeach()

set(prefix ${WORK_DIR}/prefix)
file(REMOVE_RECURSE ${WORK_DIR})
file(MAKE_DIRECTORY ${WORK_DIR})

# Runs a command, failing the test with its output when it fails.
function(run what)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE out)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "package test: ${what} failed (${rc}):\n${out}")
  endif()
endfunction()

# Runs a built program and compares its standard output with the expected text.
set(expected "0 catalog.html\n1 order.html\n2 a+b+c\n")
function(expect_output what program)
  execute_process(COMMAND ${program} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT rc EQUAL 0 OR NOT out STREQUAL expected)
    message(FATAL_ERROR "package test: ${what} program: status ${rc}\n"
                        "output:\n${out}\nexpected:\n${expected}\nstderr:\n${err}")
  endif()
endfunction()

run("cmake --install" ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})

# The layout.
set(headers ${INCLUDEDIR}/velmora)
set(dist ${DATADIR}/velmora)
foreach(file ${BINDIR}/vlnogui ${LIBDIR}/libvelmora.a
             ${headers}/velmora.h ${headers}/util/list.h ${headers}/maps/map.h
             ${dist}/config/main.tem ${dist}/config/Makefile.tem
             ${dist}/config/Velmora.cfg ${dist}/config/VlKeyWds.ini
             ${dist}/bin/vlinst.sh ${MANDIR}/man1/vlnogui.1
             ${dist}/include/VlRnHtml.h ${dist}/lib/libvlrun.a ${dist}/lib/libvlrun.so ${dist}/bin/vlsql
             ${LIBDIR}/cmake/Velmora/VelmoraConfig.cmake ${LIBDIR}/cmake/Velmora/VelmoraConfigVersion.cmake
             ${LIBDIR}/cmake/Velmora/VelmoraTargets.cmake ${LIBDIR}/pkgconfig/velmora.pc)
  if(NOT EXISTS ${prefix}/${file})
    message(FATAL_ERROR "package test: ${file} is not installed")
  endif()
endforeach()
# Exactly the public headers: every .h under src/ in its subfolder, nothing else.
file(GLOB_RECURSE public RELATIVE ${SOURCE_DIR}/src ${SOURCE_DIR}/src/*.h)
list(REMOVE_ITEM public runtime/VlRnHtml.h) # the runtime's header: in the distribution's include/
file(GLOB_RECURSE installed RELATIVE ${prefix}/${headers} ${prefix}/${headers}/*)
list(SORT public)
list(SORT installed)
if(NOT public STREQUAL installed)
  message(FATAL_ERROR "package test: installed headers\n  ${installed}\ndiffer from the public ones\n  ${public}")
endif()
execute_process(COMMAND test -x ${prefix}/${dist}/bin/vlinst.sh RESULT_VARIABLE rc)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "package test: the installed scripts are not executable")
endif()

# With find_package: a C-only CMake project, which must also refuse a version
# of another major number.
set(consumer ${SOURCE_DIR}/tests/package/consumer)
set(configure ${CMAKE_COMMAND} -S ${consumer} -DCMAKE_PREFIX_PATH=${prefix}
    -DCMAKE_C_COMPILER=${C_COMPILER} "-DCMAKE_C_FLAGS=${C_FLAGS}"
    "-DCMAKE_EXE_LINKER_FLAGS=${LINK_FLAGS}")
if(GENERATOR)
  list(APPEND configure -G ${GENERATOR})
endif()
run("configuring the find_package project" ${configure} -B ${WORK_DIR}/cmake
    -DVELMORA_WANTED_VERSION=${VERSION})
run("building the find_package project" ${CMAKE_COMMAND} --build ${WORK_DIR}/cmake)
expect_output("find_package" ${WORK_DIR}/cmake/consumer)
math(EXPR next_major "${VERSION_MAJOR} + 1")
execute_process(COMMAND ${configure} -B ${WORK_DIR}/cmake-next -DVELMORA_WANTED_VERSION=${next_major}.0
                RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE out)
if(rc EQUAL 0 OR NOT out MATCHES "compatible with requested version \"${next_major}.0\"")
  message(FATAL_ERROR "package test: find_package(Velmora ${next_major}.0) did not refuse "
                      "version ${VERSION} (${rc}):\n${out}")
endif()

# With pkg-config, the way a makefile does it: cc $(pkg-config --cflags --libs velmora).
find_program(PKG_CONFIG pkg-config)
if(NOT PKG_CONFIG)
  message(FATAL_ERROR "package test: pkg-config is not installed (apt-get install pkg-config)")
endif()
set(ENV{PKG_CONFIG_PATH} ${prefix}/${LIBDIR}/pkgconfig)
execute_process(COMMAND ${PKG_CONFIG} --modversion velmora OUTPUT_VARIABLE version
                OUTPUT_STRIP_TRAILING_WHITESPACE RESULT_VARIABLE rc ERROR_VARIABLE err)
if(NOT rc EQUAL 0 OR NOT version STREQUAL VERSION)
  message(FATAL_ERROR "package test: pkg-config --modversion velmora gave '${version}' (${rc}): ${err}")
endif()
execute_process(COMMAND ${PKG_CONFIG} --cflags --libs velmora OUTPUT_VARIABLE flags
                OUTPUT_STRIP_TRAILING_WHITESPACE RESULT_VARIABLE rc ERROR_VARIABLE err)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "package test: pkg-config --cflags --libs velmora failed: ${err}")
endif()
separate_arguments(flags UNIX_COMMAND "${flags}")
separate_arguments(c_flags UNIX_COMMAND "${C_FLAGS}")
separate_arguments(link_flags UNIX_COMMAND "${LINK_FLAGS}")
file(MAKE_DIRECTORY ${WORK_DIR}/pkg-config)
run("cc with pkg-config" ${C_COMPILER} ${c_flags} ${consumer}/main.c ${flags} ${link_flags}
    -o ${WORK_DIR}/pkg-config/consumer)
expect_output("pkg-config" ${WORK_DIR}/pkg-config/consumer)
