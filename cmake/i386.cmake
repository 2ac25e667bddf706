# 32-bit x86, run natively by its own loader and C library, which are in DTV_SYSROOT.
set(DTV_TRIPLET i686-linux-gnu)
set(DTV_LIBRARY_ARCHITECTURE i386-linux-gnu)
set(CMAKE_SYSTEM_PROCESSOR i686)
include(${CMAKE_CURRENT_LIST_DIR}/cross.cmake)
# A program of a test starts others of its kind by itself: it names the loader.
add_link_options(-Wl,--dynamic-linker=${DTV_SYSROOT}/lib/ld-linux.so.2)
list(JOIN DTV_SYSROOT_LIBRARIES : library_path)
set(CMAKE_CROSSCOMPILING_EMULATOR
  env LD_LIBRARY_PATH=${library_path}:${DTV_SYSROOT}/usr/lib/p7zip)
