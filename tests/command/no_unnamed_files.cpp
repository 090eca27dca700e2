// Loaded before the C library, makes every file system one without unnamed files, as network ones
// are.
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>

namespace {

int Open(const char* path, int flags, mode_t mode) {
    if ((flags & O_TMPFILE) == O_TMPFILE) {
        errno = EOPNOTSUPP;
        return -1;
    }
    return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

mode_t Mode(int flags, va_list rest) { return (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0; }

}  // namespace

extern "C" int open(const char* path, int flags, ...) {
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = Mode(flags, rest);
    va_end(rest);
    return Open(path, flags, mode);
}

extern "C" int open64(const char* path, int flags, ...) __attribute__((alias("open")));
