// What endings.Busy needs of libDtv.
#include "dtv/exchange.h"

#include <jni.h>

extern "C" JNIEXPORT void JNICALL Java_endings_Busy_setDeliveryThreads(JNIEnv*, jclass,
                                                                       jint count) {
    dtv::setDeliveryThreads(count);
}
