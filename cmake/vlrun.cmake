# The application runtime that generated programs link: the static library
# libvlrun (src/runtime/, with the util pieces it uses), its C header
# VlRnHtml.h, the vlsql tool that creates an application's SQLite database,
# and the distribution staged in the build tree (build/dist: config/, bin/,
# include/, lib/), which the demo and the tests name as VELMORA.
find_package(SQLite3 REQUIRED) # libsqlite3-dev
# libpq-dev: the runtime compiles against libpq's header and opens the
# library itself when a program's first PostgreSQL work call runs
# (src/runtime/pq_library.hpp), so programs do not link it.
find_package(PostgreSQL REQUIRED)
include(CheckSymbolExists)
check_symbol_exists(dlopen dlfcn.h VLRUN_DLOPEN_IN_LIBC) # glibc 2.34 and later
if(VLRUN_DLOPEN_IN_LIBC)
  set(VLRUN_DL_LIBRARY "")
else()
  set(VLRUN_DL_LIBRARY ${CMAKE_DL_LIBS})
endif()

file(GLOB VLRUN_SOURCES CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/runtime/*.cpp)
# The runtime's options and requests stand on the util layer and on the
# request record and registry it shares with the engine; util's process
# runner still calls the toolkit substitutes of the command-line build, which
# the linker pulls in only with it. These sources are compiled again here
# (position-independent, for generated programs) but kept out of the
# compile commands: the engine's entries already stand for them, and
# clang-tidy 14 checks a file once per entry and then reports a false
# "uninitialized va_list" on the second pass.
file(GLOB VLRUN_SHARED_SOURCES CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/util/*.cpp)
list(APPEND VLRUN_SHARED_SOURCES ${PROJECT_SOURCE_DIR}/src/driver/nogui.cpp
     ${PROJECT_SOURCE_DIR}/src/runtime/request.cpp ${PROJECT_SOURCE_DIR}/src/runtime/registry.cpp)
list(REMOVE_ITEM VLRUN_SOURCES ${PROJECT_SOURCE_DIR}/src/runtime/request.cpp
     ${PROJECT_SOURCE_DIR}/src/runtime/registry.cpp)
add_library(vlrun_shared OBJECT ${VLRUN_SHARED_SOURCES})
target_include_directories(vlrun_shared PRIVATE ${PROJECT_SOURCE_DIR}/src)
target_compile_options(vlrun_shared PRIVATE ${VELMORA_WARNINGS})
set_target_properties(vlrun_shared PROPERTIES POSITION_INDEPENDENT_CODE ON
                      EXPORT_COMPILE_COMMANDS OFF)
add_library(vlrun STATIC ${VLRUN_SOURCES} $<TARGET_OBJECTS:vlrun_shared>)
target_include_directories(vlrun PUBLIC ${PROJECT_SOURCE_DIR}/src)
target_include_directories(vlrun PRIVATE ${PostgreSQL_INCLUDE_DIRS})
target_link_libraries(vlrun PUBLIC SQLite::SQLite3 ${VLRUN_DL_LIBRARY})
target_compile_options(vlrun PRIVATE ${VELMORA_WARNINGS})
# Generated programs are built by cc with its defaults, often as PIE.
set_target_properties(vlrun PROPERTIES POSITION_INDEPENDENT_CODE ON)

add_executable(vlsql ${PROJECT_SOURCE_DIR}/src/runtime/vlsql/vlsql.cpp)
target_link_libraries(vlsql PRIVATE SQLite::SQLite3)
target_compile_options(vlsql PRIVATE ${VELMORA_WARNINGS})

# The generated makefile links with "-L$(VELMORA)/lib -lvlrun" and nothing
# else; -lvlrun finds this linker script first, which adds the archive and
# the libraries it needs. SQLite and the C++ library are linked statically
# when their archives are there: a CGI program starts for every request, and
# loading the two shared libraries made up most of what it took beyond an
# empty process (bench/bench_runtime.cpp). Sanitizer builds keep them shared.
set(VELMORA_STAGE ${PROJECT_BINARY_DIR}/dist)
execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=libstdc++.a
                OUTPUT_VARIABLE VLRUN_STDCXX_ARCHIVE OUTPUT_STRIP_TRAILING_WHITESPACE)
execute_process(COMMAND ${CMAKE_C_COMPILER} -print-file-name=libsqlite3.a
                OUTPUT_VARIABLE VLRUN_SQLITE_ARCHIVE OUTPUT_STRIP_TRAILING_WHITESPACE)
if(IS_ABSOLUTE "${VLRUN_STDCXX_ARCHIVE}" AND IS_ABSOLUTE "${VLRUN_SQLITE_ARCHIVE}"
   AND NOT CMAKE_CXX_FLAGS MATCHES "sanitize")
  set(VLRUN_LINKER_SCRIPT "GROUP ( libvlrun.a -l:libsqlite3.a -l:libstdc++.a -lm")
else()
  set(VLRUN_LINKER_SCRIPT "GROUP ( libvlrun.a -lsqlite3 -lstdc++ -lm")
endif()
if(VLRUN_DL_LIBRARY)
  string(APPEND VLRUN_LINKER_SCRIPT " -l${VLRUN_DL_LIBRARY}")
endif()
string(APPEND VLRUN_LINKER_SCRIPT " )\n")
file(CONFIGURE OUTPUT ${VELMORA_STAGE}/lib/libvlrun.so CONTENT "${VLRUN_LINKER_SCRIPT}")

file(GLOB_RECURSE VELMORA_DIST_FILES CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/dist/*)
add_custom_command(
  OUTPUT ${PROJECT_BINARY_DIR}/dist.staged
  COMMAND ${CMAKE_COMMAND} -E copy_directory ${PROJECT_SOURCE_DIR}/dist ${VELMORA_STAGE}
  COMMAND ${CMAKE_COMMAND} -E copy ${PROJECT_SOURCE_DIR}/src/runtime/VlRnHtml.h
          ${VELMORA_STAGE}/include/VlRnHtml.h
  COMMAND ${CMAKE_COMMAND} -E copy $<TARGET_FILE:vlrun> ${VELMORA_STAGE}/lib/libvlrun.a
  COMMAND ${CMAKE_COMMAND} -E copy $<TARGET_FILE:vlsql> ${VELMORA_STAGE}/bin/vlsql
  COMMAND ${CMAKE_COMMAND} -E touch ${PROJECT_BINARY_DIR}/dist.staged
  DEPENDS ${VELMORA_DIST_FILES} ${PROJECT_SOURCE_DIR}/src/runtime/VlRnHtml.h vlrun vlsql
  COMMENT "Staging the distribution in ${VELMORA_STAGE}")
add_custom_target(velmora_dist ALL DEPENDS ${PROJECT_BINARY_DIR}/dist.staged)

# Installed beside config/ and bin/ of the distribution.
set(VELMORA_DIST_DIR ${CMAKE_INSTALL_DATADIR}/velmora)
install(FILES ${PROJECT_SOURCE_DIR}/src/runtime/VlRnHtml.h DESTINATION ${VELMORA_DIST_DIR}/include)
install(TARGETS vlrun ARCHIVE DESTINATION ${VELMORA_DIST_DIR}/lib)
install(FILES ${VELMORA_STAGE}/lib/libvlrun.so DESTINATION ${VELMORA_DIST_DIR}/lib)
install(TARGETS vlsql RUNTIME DESTINATION ${VELMORA_DIST_DIR}/bin)
