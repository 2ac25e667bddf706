// The common services of libDtv that the bridge uses: the log and the task name.
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

/// Hands one line to the log of libDtv, which filters it by level and writes it where it writes.
/// `category` and `kind` classify the line, `module` names who wrote it, `level_mask` is the bit of
/// its level. `format` and what follows are printf's.
void DtvSvCom_Log(int category, short kind, const char* module, unsigned long level_mask,
                  const char* format, ...) __attribute__((format(printf, 5, 6)));

/// The name of the calling task. Never null; valid until the task asks again.
const char* DtvSvCom_GetMyTaskName(void);

#ifdef __cplusplus
}
#endif
