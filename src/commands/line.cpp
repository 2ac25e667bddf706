#include "commands/line.h"

void writeLine(const char* format, const char* function, int source_line, int first, int second,
               int third) {
    if (format == nullptr) {
        return;
    }
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    DtvSvCom_Log(2, trace::kDebug.kind, trace::kNative, trace::kDebug.mask, format,
                 DtvSvCom_GetMyTaskName(), trace::kDebug.word, function, source_line, first, second,
                 third);
#pragma GCC diagnostic pop
}
