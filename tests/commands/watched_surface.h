// Native objects that report when they are destroyed.
#pragma once

#include "harness/sequence.h"

#include <binder/Binder.h>
#include <gui/Surface.h>

#include <string>
#include <utility>

namespace commands {

/// A native surface without a reference: it is destroyed with the last one that is taken and
/// dropped, which adds a step to the sequence ("gone video").
class WatchedSurface : public android::Surface {
public:
    WatchedSurface(harness::Sequence& to, std::string its_name)
        : sequence(to), name(std::move(its_name)) {}
    ~WatchedSurface() override { sequence.add("gone " + name); }

    int address() const {
        return static_cast<int>(
            reinterpret_cast<intptr_t>(static_cast<const android::Surface*>(this)));
    }

private:
    harness::Sequence& sequence;
    std::string name;
};

/// The same of the other kind of reference that is sent in a TS_DTVSV_SP.
class WatchedObject : public android::BBinder {
public:
    WatchedObject(harness::Sequence& to, std::string its_name)
        : sequence(to), name(std::move(its_name)) {}
    ~WatchedObject() override { sequence.add("gone " + name); }

private:
    harness::Sequence& sequence;
    std::string name;
};

} // namespace commands
