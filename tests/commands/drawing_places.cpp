#include "commands/drawing_places.h"

#include <cstdint>

namespace commands {

using namespace harness;

namespace {
constexpr const char* rootDescriptor = "Landroid/view/Surface;III";
} // namespace

jobject javaSurface(int address) {
    return newObject("android/view/Surface", "(I)V", {address});
}

NativeSurface::NativeSurface()
    : held(new android::Surface),
      object(javaSurface(static_cast<int>(reinterpret_cast<uintptr_t>(held.get())))) {}

jobject screenInfo(jobject surface, int width, int height, int rotate, int mode) {
    return newObject("BG_TS_DTVSVLIB_SCREEN_DRAWING_INFO",
                     "(" + std::string(rootDescriptor) + "I)V",
                     {surface, width, height, rotate, mode});
}

jobject bmlInfo(jobject surface, int width, int height, int rotate) {
    return newObject("BG_TS_DTVSVLIB_BML_DRAWING_INFO", "(" + std::string(rootDescriptor) + ")V",
                     {surface, width, height, rotate});
}

jobject capInfo(jobject surface, int width, int height, int rotate, jobject layout) {
    return newObject("BG_TS_DTVSVLIB_CAP_DRAWING_INFO",
                     "(" + std::string(rootDescriptor) + "Ltype/BG_TS_DTVSVLIB_CAP_DISPLAY_INFO;)V",
                     {surface, width, height, rotate, layout});
}

jobject capLayout(int font, int characters, int lines, int separator, int x, int y, int color,
                  int alpha) {
    return newObject("BG_TS_DTVSVLIB_CAP_DISPLAY_INFO", "(IIIIIIII)V",
                     {font, characters, lines, separator, x, y, color, alpha});
}

jobject usualLayout() {
    return capLayout(20, 12, 4, 2, 33, 44, 5, 1);
}

} // namespace commands
