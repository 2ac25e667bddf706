# What the bridge's tables say of Java is compared with class files while building: with those of
# dtvserver.jar, or of the jar that DTV_JAVA names. A difference ends the build with the file and the
# line of the row. Nothing of it runs where the bridge runs, so a build for another machine compares
# as well.
set(DTV_JAVA "" CACHE FILEPATH
  "The jar of the Java service to compare the bridge with, before it is converted for the device")
set(DTV_JAVA_FRAMEWORK "" CACHE FILEPATH
  "The jar that has android/view/Surface, when that of the Java service has not")

foreach(jar IN ITEMS DTV_JAVA DTV_JAVA_FRAMEWORK)
  if(${jar} AND NOT EXISTS ${${jar}})
    message(FATAL_ERROR "${jar} names ${${jar}}, which does not exist")
  endif()
endforeach()
if(DTV_IMAGE AND NOT DTV_JAVA)
  message(STATUS "DTV_JAVA names no jar: the bridge's rows are not compared with Java")
  return()
endif()
# An image's build needs a JDK for this alone.
find_package(Java 17 REQUIRED COMPONENTS Development)

set(rows_source ${PROJECT_SOURCE_DIR}/tools/rows)
set(rows_folder ${CMAKE_BINARY_DIR}/rows)
set(rows_classes ${rows_folder}/classes)
set(rows_program ${Java_JAVA_EXECUTABLE} -Xshare:auto -XX:TieredStopAtLevel=1 -cp ${rows_classes})
file(GLOB rows_java CONFIGURE_DEPENDS ${rows_source}/rows/*.java)
file(MAKE_DIRECTORY ${rows_folder})

add_custom_command(
  OUTPUT ${rows_folder}/classes.stamp
  COMMAND ${CMAKE_COMMAND} -E rm -rf ${rows_classes}
  COMMAND ${Java_JAVAC_EXECUTABLE} -J-XX:TieredStopAtLevel=1 --release 17 -encoding UTF-8 -Xlint:all -Werror
    -d ${rows_classes} ${rows_java}
  COMMAND ${CMAKE_COMMAND} -E touch ${rows_folder}/classes.stamp
  DEPENDS ${rows_java}
  COMMENT "Building the comparison of rows"
  VERBATIM)

# The preprocessor says what the tables are made of.
add_custom_command(
  OUTPUT ${rows_folder}/rows.txt
  COMMAND ${CMAKE_CXX_COMPILER} -std=c++17 -E -P -I${PROJECT_SOURCE_DIR}/src
    -MD -MF ${rows_folder}/rows.d -MQ ${rows_folder}/rows.txt
    ${rows_source}/print_rows.cpp -o ${rows_folder}/rows.txt
  DEPENDS ${rows_source}/print_rows.cpp
  DEPFILE ${rows_folder}/rows.d
  COMMENT "Printing the bridge's rows"
  VERBATIM)

if(DTV_JAVA)
  set(rows_jar ${DTV_JAVA})
else()
  get_target_property(rows_jar dtvserver JAR_FILE)
endif()
get_filename_component(rows_jar_name ${rows_jar} NAME)
add_custom_command(
  OUTPUT ${rows_folder}/compared.stamp
  COMMAND ${rows_program} rows.CompareRows ${rows_folder}/rows.txt ${rows_jar} ${DTV_JAVA_FRAMEWORK}
  COMMAND ${CMAKE_COMMAND} -E touch ${rows_folder}/compared.stamp
  DEPENDS ${rows_folder}/classes.stamp ${rows_folder}/rows.txt ${rows_jar} ${DTV_JAVA_FRAMEWORK}
  COMMENT "Comparing the bridge's rows with ${rows_jar_name}"
  VERBATIM)
add_custom_target(dtv_rows ALL DEPENDS ${rows_folder}/compared.stamp)
if(TARGET dtvserver)
  add_dependencies(dtv_rows dtvserver)
endif()
add_dependencies(Dtv_jni dtv_rows)

# The tests are about the comparison: it is the same in each build of a machine.
if(DTV_BUILD_TESTS AND NOT DTV_IMAGE AND NOT DTV_SANITIZE AND NOT CMAKE_CROSSCOMPILING
    AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  add_subdirectory(tools/rows/tests)
endif()
