// A bridge as one writes it by hand for one Java VM: the same records, the same Java classes, the
// same checks of arguments and texts as the bridge, and nothing else. It knows the messages that
// the benchmarks send.
//
// Beside the bridge it does without: the registries that can be asked, objects kept with the rows
// of methods, the line that says why an argument was refused, a check for an exception after each
// construction that returned an object.
#pragma once

#include <DtvSvLibListener.h>
#include <jni.h>

#include <string>

#define HAND_EXPORT __attribute__((visibility("default")))

namespace hand {

/// The variants, as policy.h describes them.
enum class Variant {
    kKept,
    kKeptWithLines,
    kLooksUp,
    kLooksUpWithLines,
};
constexpr int kVariantCount = 4;

/// Resolves all ids and makes the listeners. Empty, or what is missing.
HAND_EXPORT std::string load(JavaVM* vm, JNIEnv* env);

/// Resolves the classes and methods alone, as often as it is called: what a load costs at least.
HAND_EXPORT std::string resolveIds(JNIEnv* env);

/// The listener that takes the events of a variant. Those that differ in the look-ups alone have
/// equal ones.
HAND_EXPORT DtvSvLibListener* listener(Variant variant);

/// Binds the natives of a variant to a class with the methods of DtvServerProxy. False when the VM
/// refuses.
HAND_EXPORT bool bind(JNIEnv* env, jclass proxy, Variant variant);

} // namespace hand
