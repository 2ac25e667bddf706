#include "binding/listener.h"

#include <cstdlib>

namespace harness {

std::string loadProbe() {
    setenv("DTV_JNI_LIBRARY", BINDING_PROBE_FILE, 1);
    return Product::load();
}

} // namespace harness
