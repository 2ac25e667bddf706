// From the Java descriptions of the planes to drawing-info records and surface references.
//
// The routines answer 0 for success and 1 for failure, after one line that says why. When Java code
// threw they answer 1 without a line, and the exception is pending. A failed record may be filled
// in part. None of them leaves a local reference.
#pragma once

#include "commands/command.h"
#include "commands/fields.h"
#include "records/drawing_info.h"

#include <DtvSvLibListener.h>

int setScreenDrawingInfo(JNIEnv* env, jobject info_object, SCREEN_DRAWING_INFO* out);
int setCapDrawingInfo(JNIEnv* env, jobject info_object, CAP_DRAWING_INFO* out);
int setCapDisplayInfo(JNIEnv* env, jobject display_info_object, CAP_DISPLAY_INFO* out);
int setBMLDrawingInfo(JNIEnv* env, jobject info_object, BML_DRAWING_INFO* out);

/// Takes a strong reference to the native surface of a drawing-info object, whose class is
/// `info_class`, into `slot`. A Surface without native surface leaves the slot empty.
int setSurface(JNIEnv* env, jclass info_class, jobject info_object,
               android::sp<android::Surface>* slot);

/// The answer of a native whose drawing info or surface could not be read: null when Java threw,
/// else the refusal. It adds no line of its own.
jobject answerUnreadPlane(const Command& command);

/// Takes the surface of a plane into the next slot of the carrier. `class_text` is what is logged
/// with 1 when the plane's object has no class.
#define TAKE_SURFACE(command, info_object, carrier, class_text)                                    \
    do {                                                                                           \
        const jclass plane_class = classOf((command).env, info_object);                            \
        if (plane_class == nullptr) {                                                              \
            REFUSE(command, class_text, 1);                                                        \
        }                                                                                          \
        if (setSurface((command).env, plane_class, info_object,                                    \
                       &(carrier).surface[(carrier).surface_count]) == 1) {                        \
            return answerUnreadPlane(command);                                                     \
        }                                                                                          \
        ++(carrier).surface_count;                                                                 \
    } while (false)

/// Reads a plane's record part with `read`, then takes its surface into the next slot.
#define TAKE_PLANE(command, object, read, out, carrier, class_text)                                \
    do {                                                                                           \
        if (read((command).env, object, out) != 0) {                                               \
            return answerUnreadPlane(command);                                                     \
        }                                                                                          \
        TAKE_SURFACE(command, object, carrier, class_text);                                        \
    } while (false)

/// Whether a control type of the captions or the BML browser passes: 255, or anything up to 4.
constexpr bool isControlType(jint type) {
    return type == 255 || type <= 4;
}

void traceScreenDrawingInfo(const char* function, const SCREEN_DRAWING_INFO& info);
void traceCapDrawingInfo(const char* function, const CAP_DRAWING_INFO& info);
/// The lines of the caption plane as SetCapDisplay labels them.
void traceCapDisplayCommand(const char* function, const CAP_DRAWING_INFO& info);
void traceBMLDrawingInfo(const char* function, const BML_DRAWING_INFO& info);
