// Observes a load: what is registered with the VM, and which version of JNI is requested.
#pragma once

#include <jni.h>

#include <string>
#include <vector>

namespace harness {

/// One registration of native methods, as it was given to RegisterNatives.
struct Registration {
    std::string class_name; ///< with dots
    std::vector<std::string> names;
    std::vector<std::string> signatures;
    std::vector<const void*> functions;
};

/// While it lives, every RegisterNatives on a class of the receiver's is kept.
class RegistrationRecorder {
public:
    /// With `refuse`, such a RegisterNatives registers nothing, throws a NoSuchMethodError and
    /// returns JNI_ERR.
    explicit RegistrationRecorder(bool refuse = false);
    ~RegistrationRecorder();
    RegistrationRecorder(const RegistrationRecorder&) = delete;
    RegistrationRecorder& operator=(const RegistrationRecorder&) = delete;

    const std::vector<Registration>& kept() const;
};

/// While it lives, GetEnv for JNI 1.4 (0x10004) is kept and, if requested, refused.
class VersionProbe {
public:
    explicit VersionProbe(bool refuse);
    ~VersionProbe();
    VersionProbe(const VersionProbe&) = delete;
    VersionProbe& operator=(const VersionProbe&) = delete;

    int asked() const; ///< how often 0x10004 was requested

private:
    const JNIInvokeInterface_* before;
};

} // namespace harness
