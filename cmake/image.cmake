# The platform as it is in a receiver's image, in place of the desk's: DTV_IMAGE/include holds the
# headers, DTV_IMAGE/lib the libraries. The compiler is that of the image, or the NDK's.
set(CMAKE_SKIP_RPATH ON) # the device's linker knows where its libraries are

add_library(dtv_platform INTERFACE)
target_include_directories(dtv_platform SYSTEM INTERFACE ${DTV_IMAGE}/include)

foreach(library Dtv binder android_runtime gui utils)
  set(file ${DTV_IMAGE}/lib/lib${library}.so)
  if(NOT EXISTS ${file})
    message(FATAL_ERROR "${file} is missing: DTV_IMAGE has to hold the image's libraries")
  endif()
  add_library(${library} SHARED IMPORTED GLOBAL)
  set_target_properties(${library} PROPERTIES IMPORTED_LOCATION ${file})
endforeach()
add_library(android_utils ALIAS utils)
