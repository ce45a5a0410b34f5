/* The filter provider library as the console sees it: three entry points known by their ordinals.
 * This stand-in registers nothing; it answers the way the real library does so that the console's
 * install, uninstall and blocked-name paths can run end to end. */
#include <string.h>

#define HV_EXPORT __attribute__((visibility("default")))

/* Ordinal 3: put the provider into the catalogue. The argument is the library's own constant. */
HV_EXPORT int hvsock_ordinal_3(int reserved) {
    (void)reserved;
    return 0;
}

/* Ordinal 4: take it out again. */
HV_EXPORT int hvsock_ordinal_4(int reserved) {
    (void)reserved;
    return 0;
}

/* Ordinal 19: the name a program is blocked by. The caller hands a 255-byte buffer holding a full path,
 * padded with blanks; the buffer gets the file's base name (after the last '/' or '\'), NUL-terminated. */
HV_EXPORT int hvsock_ordinal_19(char* buffer) {
    enum { kSize = 255 };
    if (!buffer)
        return 0;
    int len = 0;
    while (len < kSize && buffer[len] != '\0')
        ++len;
    while (len > 0 && buffer[len - 1] == ' ')
        --len;
    int start = 0;
    for (int i = 0; i < len; ++i)
        if (buffer[i] == '/' || buffer[i] == '\\')
            start = i + 1;
    int n = len - start;
    if (n > kSize - 1) /* the NUL must fit in the buffer */
        n = kSize - 1;
    memmove(buffer, buffer + start, (size_t)n);
    buffer[n] = '\0';
    return n;
}
