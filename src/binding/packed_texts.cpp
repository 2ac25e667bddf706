#include "binding/packed_texts.h"

char* packed_text::unpack(const char* packed, char* out) {
    for (; *packed != '\0'; ++packed) {
        const auto byte = static_cast<unsigned char>(*packed);
        if (byte > kWordCount) {
            *out++ = *packed;
            continue;
        }
        for (const char* word = kWords[byte - 1].text; *word != '\0'; ++word) {
            *out++ = *word;
        }
    }
    *out = '\0';
    return out + 1;
}
