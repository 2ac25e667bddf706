#include "commands/framework/command_helpers.h"

#include "commands/argument.h"
#include "commands/drawing_info.h"
#include "commands/sync_reply.h"

namespace commands {

void newListener(JavaVM* vm) {
    g_listener = new JNIDtvSvLibListener;
    g_listener->setVM(vm);
}

int registerClass(JNIEnv* env, int class_id, const char* name) {
    return g_listener->setJavaClass(env, class_id, name);
}

jobject retCode(JNIEnv* env, int code) {
    return getRetCode(env, code);
}

int enumValue(JNIEnv* env, const char* name, const char* type, const char* getter, int* value) {
    jclass samples = env->FindClass("harness/EnumSamples");
    jfieldID held = env->GetStaticFieldID(samples, "held", "Lharness/EnumSamples;");
    jobject holder = env->GetStaticObjectField(samples, held);
    env->DeleteLocalRef(samples);
    int ret = getEnumValue(env, holder, name, type, getter, value);
    if (holder != nullptr) {
        env->DeleteLocalRef(holder);
    }
    return ret;
}

jobject syncAnswer(JNIEnv* env, int message_id, const void* reply, int ret, const void* request) {
    return makeComReplyObjSync(env, message_id, reply, ret, request);
}

bool refuseTwice(JNIEnv* env) {
    Argument argument(env, "setScreenDrawingInfo", nullptr, 1);
    argument.requireClass(INT_LINE("screen_drawing_info_clazz class is NULL, ret = %d"));
    argument.requireObject(INT_LINE("drawing_info_obj is NULL, ret = %d"));
    return argument.refused();
}

jobject adopt(JNIEnv* env, jobject object) {
    return env->PushLocalFrame(1) == JNI_OK ? env->PopLocalFrame(object) : nullptr;
}

int screenDrawingInfo(JNIEnv* env, jobject info, void* out) {
    return setScreenDrawingInfo(env, info, static_cast<SCREEN_DRAWING_INFO*>(out));
}

int capDrawingInfo(JNIEnv* env, jobject info, void* out) {
    return setCapDrawingInfo(env, info, static_cast<CAP_DRAWING_INFO*>(out));
}

int capDisplayInfo(JNIEnv* env, jobject info, void* out) {
    return setCapDisplayInfo(env, info, static_cast<CAP_DISPLAY_INFO*>(out));
}

int bmlDrawingInfo(JNIEnv* env, jobject info, void* out) {
    return setBMLDrawingInfo(env, info, static_cast<BML_DRAWING_INFO*>(out));
}

int surface(JNIEnv* env, jclass info_class, jobject info, android::sp<android::Surface>* slot) {
    return setSurface(env, info_class, info, slot);
}

} // namespace commands
