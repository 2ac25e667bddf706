#include "script/patch.h"

#include <algorithm>

namespace simulator {

void applyPatches(const std::vector<Patch>& patches, std::vector<uint8_t>& record) {
    for (const Patch& patch : patches) {
        record.resize(std::max(record.size(), patch.offset + patch.bytes.size()));
        std::copy(patch.bytes.begin(), patch.bytes.end(),
                  record.begin() + static_cast<std::ptrdiff_t>(patch.offset));
    }
}

} // namespace simulator
