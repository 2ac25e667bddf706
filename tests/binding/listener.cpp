#include "binding/listener.h"

#include <cstdlib>

namespace harness {

std::string loadProbe() {
    const char* const other = std::getenv("DTV_TEST_BINDING_PROBE");
    setenv("DTV_JNI_LIBRARY", other != nullptr ? other : BINDING_PROBE_FILE, 1);
    return Product::load();
}

} // namespace harness
