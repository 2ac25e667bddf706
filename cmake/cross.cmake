# What the toolchains of the other architectures have in common: Debian's cross compiler, and the
# architecture's own packages unpacked into the folder DTV_SYSROOT.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES DTV_SYSROOT)
if(NOT DTV_SYSROOT)
  message(FATAL_ERROR "DTV_SYSROOT must name the folder of the architecture's packages")
endif()
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_CXX_COMPILER ${DTV_TRIPLET}-g++)
set(CMAKE_LIBRARY_ARCHITECTURE ${DTV_LIBRARY_ARCHITECTURE})

# Libraries and packages come from the folder, headers and programs from the machine.
set(CMAKE_FIND_ROOT_PATH ${DTV_SYSROOT})
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE BOTH)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)

file(GLOB DTV_SYSROOT_JVM ${DTV_SYSROOT}/usr/lib/jvm/java-17-openjdk-*/lib/server/libjvm.so)
set(JAVA_JVM_LIBRARY ${DTV_SYSROOT_JVM} CACHE FILEPATH "The VM of the architecture")

set(DTV_SYSROOT_LIBRARIES
  ${DTV_SYSROOT}/lib/${DTV_LIBRARY_ARCHITECTURE} ${DTV_SYSROOT}/usr/lib/${DTV_LIBRARY_ARCHITECTURE}
  ${DTV_SYSROOT}/usr/lib/${DTV_LIBRARY_ARCHITECTURE}/android)
foreach(folder IN LISTS DTV_SYSROOT_LIBRARIES)
  # The C library to link with is the cross compiler's own.
  add_link_options(-Wl,-rpath-link,${folder})
endforeach()
# Libraries of the folder lean on others that are found when they are loaded.
add_link_options(-Wl,--allow-shlib-undefined)
