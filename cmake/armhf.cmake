# 32-bit ARM with hardware floating point, run by qemu-arm with the C library in DTV_SYSROOT.
set(DTV_TRIPLET arm-linux-gnueabihf)
set(DTV_LIBRARY_ARCHITECTURE arm-linux-gnueabihf)
set(CMAKE_SYSTEM_PROCESSOR arm)
# Both ends of every call here are compiled by the same compiler.
set(CMAKE_CXX_FLAGS_INIT -Wno-psabi)
include(${CMAKE_CURRENT_LIST_DIR}/cross.cmake)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm -L ${DTV_SYSROOT}
  -E LD_LIBRARY_PATH=${DTV_SYSROOT}/usr/lib/${DTV_LIBRARY_ARCHITECTURE}/android)
