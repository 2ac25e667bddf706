// The native methods of DtvServerProxy. Each answers a local reference to a result object, or null
// when Java threw while its arguments were read, or when the object cannot be made.
#pragma once

#include <jni.h>

// Session, scan and search (session.cpp).
jobject dtvSvLibCreate(JNIEnv* env, jobject proxy, jint, jint);
jobject dtvSvLibRelease(JNIEnv* env, jobject proxy, jint);
jobject dtvSvLibStartScan(JNIEnv* env, jobject proxy, jint);
jobject dtvSvLibCancelScan(JNIEnv* env, jobject proxy, jint);
jobject dtvSvLibTerminateBroadcastReceiving(JNIEnv* env, jobject proxy, jint);
jobject dtvSvLibCancelSearchChannel(JNIEnv* env, jobject proxy, jint);

// Selection of a service (channel.cpp).
jobject dtvSvLibStartBroadcastReceiving(JNIEnv* env, jobject proxy, jint, jobject);
jobject dtvSvLibSelectChannel(JNIEnv* env, jobject proxy, jint, jobject);
jobject dtvSvLibStartSearchChannel(JNIEnv* env, jobject proxy, jint, jobject, jint);

// One value or none (scalar.cpp).
jobject dtvSvLibReleaseDisplay(JNIEnv* env, jobject proxy, jint, jint);
jobject dtvSvLibControlDisplayModeReq(JNIEnv* env, jobject proxy, jint, jint, jint);
jobject dtvSvLibControlScreenDisplay(JNIEnv* env, jobject proxy, jint, jint);
jobject dtvSvLibControlDecodeScreen(JNIEnv* env, jobject proxy, jint, jint);
jobject dtvSvLibChangeAudioComponent(JNIEnv* env, jobject proxy, jint, jint);
jobject dtvSvLibChangeSoundDualMono(JNIEnv* env, jobject proxy, jint, jint);
jobject dtvSvLibSetSoundVideoDelay(JNIEnv* env, jobject proxy, jint, jint, jint);
jobject dtvSvLibControlDecodeAudio(JNIEnv* env, jobject proxy, jint, jint);
jobject dtvSvLibChangeCapLang(JNIEnv* env, jobject proxy, jint, jint);
jobject dtvSvLibBMLEndTvLinkReq(JNIEnv* env, jobject proxy, jint);
jobject dtvSvLibBMLWriteNvramReply(JNIEnv* env, jobject proxy, jint, jint);
jobject dtvSvLibBMLMailReply(JNIEnv* env, jobject proxy, jint, jint);
jobject dtvSvLibBMLPhonebookReply(JNIEnv* env, jobject proxy, jint, jint);
jobject dtvSvLibBMLCallReply(JNIEnv* env, jobject proxy, jint, jint);
jobject dtvSvLibBMLScheduleReply(JNIEnv* env, jobject proxy, jint, jint);
jobject dtvSvLibBMLBrowserReply(JNIEnv* env, jobject proxy, jint, jint);
jobject dtvSvLibBMLStartTvLinkReply(JNIEnv* env, jobject proxy, jint, jint);
jobject dtvSvLibBMLEnrolTvlinkReply(JNIEnv* env, jobject proxy, jint, jint);
jobject dtvSvLibBMLRebootBrowserReq(JNIEnv* env, jobject proxy, jint);
jobject dtvSvLibStartRec(JNIEnv* env, jobject proxy, jint, jint);
jobject dtvSvLibPausePlay(JNIEnv* env, jobject proxy, jint);
jobject dtvSvLibReStartPlay(JNIEnv* env, jobject proxy, jint);
jobject dtvSvLibFrameSlidePlay(JNIEnv* env, jobject proxy, jint, jint);
jobject dtvSvLibTerminatePlay(JNIEnv* env, jobject proxy, jint);
jobject dtvSvLibMovePausePosition(JNIEnv* env, jobject proxy, jint, jint);
jobject dtvSvLibControlLNA(JNIEnv* env, jobject proxy, jint, jint);
jobject dtvSvLibSetTunerLog(JNIEnv* env, jobject proxy, jint, jint);
jobject dtvSvLibGetTunerLogStatus(JNIEnv* env, jobject proxy, jint);

// Synchronous twins (sync.cpp).
jobject dtvSvLibRelease_Sync(JNIEnv* env, jobject proxy, jint);
jobject dtvSvLibCancelScan_Sync(JNIEnv* env, jobject proxy, jint);
jobject dtvSvLibTerminateBroadcastReceiving_Sync(JNIEnv* env, jobject proxy, jint);
jobject dtvSvLibControlDecodeScreen_Sync(JNIEnv* env, jobject proxy, jint, jint);
jobject dtvSvLibControlDecodeAudio_Sync(JNIEnv* env, jobject proxy, jint, jint);
jobject dtvSvLibBMLEndTvLinkReq_Sync(JNIEnv* env, jobject proxy, jint);
jobject dtvSvLibTerminatePlay_Sync(JNIEnv* env, jobject proxy, jint);

// Planes and what they show (display.cpp).
jobject dtvSvLibSetFirstComponent(JNIEnv* env, jobject proxy, jint, jobject);
jobject dtvSvLibSetDisplayAll(JNIEnv* env, jobject proxy, jint, jobject, jobject, jobject);
jobject dtvSvLibSetScreenDisplay(JNIEnv* env, jobject proxy, jint, jobject);
jobject dtvSvLibSetCapDisplay(JNIEnv* env, jobject proxy, jint, jobject);
jobject dtvSvLibSetBMLDisplay(JNIEnv* env, jobject proxy, jint, jobject);
jobject dtvSvLibControlCap(JNIEnv* env, jobject proxy, jint, jint, jint, jobject);
jobject dtvSvLibControlBML(JNIEnv* env, jobject proxy, jint, jint, jobject);
jobject dtvSvLibControlCap_Sync(JNIEnv* env, jobject proxy, jint, jint, jint, jobject);
jobject dtvSvLibControlBML_Sync(JNIEnv* env, jobject proxy, jint, jint, jobject);

// Playback and recording (playback.cpp).
jobject dtvSvLibTerminateRec(JNIEnv* env, jobject proxy, jint, jobject);
jobject dtvSvLibStartPlay(JNIEnv* env, jobject proxy, jint, jobject);
jobject dtvSvLibChangePlaySpeed(JNIEnv* env, jobject proxy, jint, jobject);
jobject dtvSvLibSkipPlay(JNIEnv* env, jobject proxy, jint, jobject);
jobject dtvSvLibTerminateRec_Sync(JNIEnv* env, jobject proxy, jint, jobject);

// Answers to the BML browser (bml.cpp).
jobject dtvSvLibBMLStartTvLinkReq(JNIEnv* env, jobject proxy, jint, jint, jobject);
jobject dtvSvLibBMLKeyEventNotify(JNIEnv* env, jobject proxy, jint, jobject);
jobject dtvSvLibBMLPermissionReply(JNIEnv* env, jobject proxy, jint, jobject);
jobject dtvSvLibBMLAuthReply(JNIEnv* env, jobject proxy, jint, jobject);
jobject dtvSvLibBMLReadNvramReply(JNIEnv* env, jobject proxy, jint, jobject);
jobject dtvSvLibBMLFepReply(JNIEnv* env, jobject proxy, jint, jobject);
jobject dtvSvLibBMLSavePictureReply(JNIEnv* env, jobject proxy, jint, jobject);
