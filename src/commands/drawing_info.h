// From the Java descriptions of the planes to drawing-info records and surface references.
//
// The routines answer 0 for success and 1 for failure, after one line that says why. When Java code
// threw they answer 1 without a line, and the exception is pending. A failed record may be filled
// in part. The first four and setSurface leave no local reference.
#pragma once

#include "commands/argument.h"
#include "records/drawing_info_records.h"

#include <DtvSvLibListener.h>

int setScreenDrawingInfo(JNIEnv* env, jobject info_object, SCREEN_DRAWING_INFO* out);
int setCapDrawingInfo(JNIEnv* env, jobject info_object, CAP_DRAWING_INFO* out);
int setCapDisplayInfo(JNIEnv* env, jobject display_info_object, CAP_DISPLAY_INFO* out);
int setBMLDrawingInfo(JNIEnv* env, jobject info_object, BML_DRAWING_INFO* out);

/// Takes a strong reference to the native surface of a drawing-info object, whose class is
/// `info_class`, into `slot`. A Surface without native surface leaves the slot empty.
int setSurface(JNIEnv* env, jclass info_class, jobject info_object,
               android::sp<android::Surface>* slot);

/// Takes the surface of a plane's object into the next slot. `missing_class` is the line about an
/// object without a class.
void takeSurface(NativeCall& call, jobject info_object, TS_DTVSV_SP& surfaces,
                 FieldLine missing_class, int line);

/// Reads a plane's object into its part of a record with `read`, one of the routines above, then
/// takes its surface into the next slot.
template <class Info>
void takePlane(NativeCall& call, jobject info_object, int (*read)(JNIEnv*, jobject, Info*),
               Info* out, TS_DTVSV_SP& surfaces, FieldLine missing_class,
               int line = __builtin_LINE()) {
    if (call.refused()) {
        return;
    }
    if (read(call.env(), info_object, out) != 0) {
        // The routine has written its line.
        call.refuseWithoutLine();
        return;
    }
    takeSurface(call, info_object, surfaces, missing_class, line);
}

/// Checks a control type of the captions or of the BML browser: 255, or anything up to 4, is
/// accepted. Otherwise the call is refused with the line, which shows the type and "ret".
uint8_t readControlType(NativeCall& call, jint type, Line<2> line,
                        int source_line = __builtin_LINE());

void traceScreenDrawingInfo(const char* function, const SCREEN_DRAWING_INFO& info);
void traceCapDrawingInfo(const char* function, const CAP_DRAWING_INFO& info);
/// The lines of the caption plane as SetCapDisplay labels them.
void traceCapDisplayCommand(const char* function, const CAP_DRAWING_INFO& info);
void traceBMLDrawingInfo(const char* function, const BML_DRAWING_INFO& info);
