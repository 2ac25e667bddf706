// Native methods of the watched library: each is called through a closure that keeps what its run
// made.
#include "strict_jni/state.h"

#include <ffi.h>

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace strict_jni {
namespace {

/// One native method. It lives as long as the process: the VM keeps the closure's address.
struct Native {
    std::string name;
    std::string arguments; ///< their letters, 'L' for arrays too
    bool object = false;   ///< returns one
    void (*function)() = nullptr;
    ffi_cif interface = {};
    std::vector<ffi_type*> types;
};

/// The letters of a signature's arguments, arrays as 'L'.
std::string argumentLetters(const std::string& signature) {
    std::string letters;
    for (size_t at = 1; at < signature.size() && signature[at] != ')'; ++at) {
        char letter = signature[at] == '[' ? 'L' : signature[at];
        while (signature[at] == '[') {
            ++at;
        }
        if (signature[at] == 'L') {
            at = signature.find(';', at);
        }
        letters += letter;
    }
    return letters;
}

ffi_type* typeOf(char letter) {
    switch (letter) {
    case 'V':
        return &ffi_type_void;
    case 'Z':
        return &ffi_type_uint8;
    case 'B':
        return &ffi_type_sint8;
    case 'C':
        return &ffi_type_uint16;
    case 'S':
        return &ffi_type_sint16;
    case 'I':
        return &ffi_type_sint32;
    case 'J':
        return &ffi_type_sint64;
    case 'F':
        return &ffi_type_float;
    case 'D':
        return &ffi_type_double;
    default:
        return &ffi_type_pointer;
    }
}

void runNative(ffi_cif* interface, void* result, void** values, void* data) {
    const Native& native = *static_cast<const Native*>(data);
    std::vector<jobject> references{*static_cast<jobject*>(values[1])};
    for (size_t i = 0; i < native.arguments.size(); ++i) {
        if (native.arguments[i] == 'L') {
            references.push_back(*static_cast<jobject*>(values[i + 2]));
        }
    }
    NativeRun run(native.name, std::move(references));
    ffi_call(interface, native.function, result, values);
    run.end(native.object, native.object ? *static_cast<jobject*>(result) : nullptr);
}

void* closureFor(const JNINativeMethod& method) {
    auto made = std::make_unique<Native>();
    Native& native = *made;
    const std::string signature = method.signature;
    char returned = signature[signature.find(')') + 1];
    native.name = method.name;
    native.arguments = argumentLetters(signature);
    native.object = returned == 'L' || returned == '[';
    native.function = reinterpret_cast<void (*)()>(method.fnPtr);
    native.types = {&ffi_type_pointer, &ffi_type_pointer};
    for (char letter : native.arguments) {
        native.types.push_back(typeOf(letter));
    }
    void* code = nullptr;
    auto* closure = static_cast<ffi_closure*>(ffi_closure_alloc(sizeof(ffi_closure), &code));
    if (closure == nullptr ||
        ffi_prep_cif(&native.interface, FFI_DEFAULT_ABI, static_cast<unsigned>(native.types.size()),
                     typeOf(returned), native.types.data()) != FFI_OK ||
        ffi_prep_closure_loc(closure, &native.interface, &runNative, made.release(), code) !=
            FFI_OK) {
        std::fprintf(stderr, "strict_jni: no closure for the native method %s\n", method.name);
        std::abort();
    }
    return code;
}

} // namespace

jint JNICALL registerNatives(JNIEnv* env, jclass of, const JNINativeMethod* methods, jint count) {
    std::vector<JNINativeMethod> table(methods, methods + (count > 0 ? count : 0));
    for (JNINativeMethod& method : table) {
        if (isWatched(method.fnPtr)) {
            method.fnPtr = closureFor(method);
        }
    }
    return vm_table.RegisterNatives(env, of, table.data(), count);
}

} // namespace strict_jni
