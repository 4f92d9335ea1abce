// A shared library for LD_PRELOAD that lets one chosen call of the program fail (FaultPlan.h): what
// a full disk, a broken one, a lost network folder or a machine without memory would do just there.
//
// Calls from inside of the C library cannot be replaced. So a stream of the C library whose
// descriptor must fail gets another descriptor under it, one that really fails.

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <cstdio>

#include "FaultPlan.h"

using weldline::test::failsOn;
using weldline::test::failsOnMemory;
using weldline::test::isShortInstead;

namespace {

// The function that the shim stands in front of.
template <class Function>
Function* next(const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

using Main = int(int, char**, char**);
Main* programMain = nullptr;

int watchedMain(int argc, char** argv, char** environment) {
    weldline::test::startFaults();
    const int code = programMain(argc, argv, environment);
    weldline::test::endFaults();
    return code;
}

std::size_t half(std::size_t size) {
    return size > 1 ? size / 2 : size;
}

// Nothing can be read from the stream any more, nothing written to it.
void breakStream(FILE* stream, bool reading) {
    const char* device = reading ? "/dev/null" : "/dev/full";
    const long broken = ::syscall(SYS_openat, AT_FDCWD, device, O_WRONLY | O_CLOEXEC);
    ::syscall(SYS_dup3, broken, ::fileno(stream), O_CLOEXEC);
    ::syscall(SYS_close, broken);
}

void breakReading(const char* call, FILE* stream) {
    if (failsOn(call, ::fileno(stream))) breakStream(stream, true);
}

}  // namespace

extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* old, std::size_t size);

int __libc_start_main(Main* function, int argc, char** argv, void (*init)(), void (*fini)(),
                      void (*end)(), void* stack) {
    programMain = function;
    using Start = int(Main*, int, char**, void (*)(), void (*)(), void (*)(), void*);
    return next<Start>("__libc_start_main")(watchedMain, argc, argv, init, fini, end, stack);
}

// Files by name.

int open(const char* path, int flags, ...) {
    va_list more;
    va_start(more, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(more, mode_t) : 0;
    va_end(more);
    if (failsOn("open", path)) return -1;
    return next<int(const char*, int, ...)>("open")(path, flags, mode);
}

int open64(const char* path, int flags, ...) {
    va_list more;
    va_start(more, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(more, mode_t) : 0;
    va_end(more);
    return open(path, flags, mode);
}

FILE* fopen(const char* path, const char* mode) {
    if (failsOn("open", path)) return nullptr;
    return next<FILE*(const char*, const char*)>("fopen")(path, mode);
}

FILE* fopen64(const char* path, const char* mode) {
    return fopen(path, mode);
}

DIR* opendir(const char* path) {
    if (failsOn("opendir", path)) return nullptr;
    return next<DIR*(const char*)>("opendir")(path);
}

int stat(const char* path, struct stat* status) noexcept {
    if (failsOn("stat", path)) return -1;
    return next<int(const char*, struct stat*)>("stat")(path, status);
}

int stat64(const char* path, struct stat64* status) noexcept {
    if (failsOn("stat", path)) return -1;
    return next<int(const char*, struct stat64*)>("stat64")(path, status);
}

int lstat(const char* path, struct stat* status) noexcept {
    if (failsOn("stat", path)) return -1;
    return next<int(const char*, struct stat*)>("lstat")(path, status);
}

int access(const char* path, int kind) noexcept {
    if (failsOn("access", path)) return -1;
    return next<int(const char*, int)>("access")(path, kind);
}

ssize_t readlink(const char* path, char* target, std::size_t size) noexcept {
    if (failsOn("readlink", path)) return -1;
    return next<ssize_t(const char*, char*, std::size_t)>("readlink")(path, target, size);
}

char* realpath(const char* path, char* resolved) noexcept {
    if (failsOn("realpath", path)) return nullptr;
    return next<char*(const char*, char*)>("realpath")(path, resolved);
}

char* mkdtemp(char* pattern) noexcept {
    if (failsOn("mkdtemp", pattern)) return nullptr;
    return next<char*(char*)>("mkdtemp")(pattern);
}

int rename(const char* from, const char* to) noexcept {
    if (failsOn("rename", to)) return -1;
    return next<int(const char*, const char*)>("rename")(from, to);
}

int unlink(const char* path) noexcept {
    if (failsOn("unlink", path)) return -1;
    return next<int(const char*)>("unlink")(path);
}

int rmdir(const char* path) noexcept {
    if (failsOn("rmdir", path)) return -1;
    return next<int(const char*)>("rmdir")(path);
}

// Descriptors.

ssize_t read(int file, void* bytes, std::size_t size) {
    const auto call = next<ssize_t(int, void*, std::size_t)>("read");
    if (!failsOn("read", file)) return call(file, bytes, size);
    return isShortInstead() ? call(file, bytes, half(size)) : -1;
}

ssize_t write(int file, const void* bytes, std::size_t size) {
    const auto call = next<ssize_t(int, const void*, std::size_t)>("write");
    if (!failsOn("write", file)) return call(file, bytes, size);
    return isShortInstead() ? call(file, bytes, half(size)) : -1;
}

ssize_t writev(int file, const struct iovec* parts, int count) {
    if (failsOn("write", file)) return -1;
    return next<ssize_t(int, const struct iovec*, int)>("writev")(file, parts, count);
}

int fstat64(int file, struct stat64* status) noexcept {
    if (failsOn("fstat", file)) return -1;
    return next<int(int, struct stat64*)>("fstat64")(file, status);
}

int fstat(int file, struct stat* status) noexcept {
    if (failsOn("fstat", file)) return -1;
    return next<int(int, struct stat*)>("fstat")(file, status);
}

off64_t lseek64(int file, off64_t offset, int origin) noexcept {
    if (failsOn("lseek", file)) return -1;
    return next<off64_t(int, off64_t, int)>("lseek64")(file, offset, origin);
}

int fsync(int file) {
    if (failsOn("fsync", file)) return -1;
    return next<int(int)>("fsync")(file);
}

int fchmod(int file, mode_t mode) noexcept {
    if (failsOn("fchmod", file)) return -1;
    return next<int(int, mode_t)>("fchmod")(file, mode);
}

int fchown(int file, uid_t user, gid_t group) noexcept {
    if (failsOn("fchown", file)) return -1;
    return next<int(int, uid_t, gid_t)>("fchown")(file, user, group);
}

int fcntl(int file, int command, ...) {
    va_list more;
    va_start(more, command);
    const long argument = va_arg(more, long);
    va_end(more);
    if (failsOn("fcntl", file)) return -1;
    return next<int(int, int, ...)>("fcntl")(file, command, argument);
}

int dup2(int file, int number) noexcept {
    if (failsOn("dup2", number)) return -1;
    return next<int(int, int)>("dup2")(file, number);
}

// A close that fails has closed all the same.
int close(int file) {
    const bool fails = failsOn("close", file);
    const int error = errno;
    const int result = next<int(int)>("close")(file);
    if (!fails) return result;
    errno = error;
    return -1;
}

// Streams of the C library.

std::size_t fread(void* bytes, std::size_t size, std::size_t count, FILE* stream) {
    breakReading("fread", stream);
    return next<std::size_t(void*, std::size_t, std::size_t, FILE*)>("fread")(bytes, size, count,
                                                                              stream);
}

char* fgets(char* text, int size, FILE* stream) {
    breakReading("fgets", stream);
    return next<char*(char*, int, FILE*)>("fgets")(text, size, stream);
}

// What the stream still held is lost.
int fclose(FILE* stream) {
    if (failsOn("fclose", ::fileno(stream))) breakStream(stream, false);
    return next<int(FILE*)>("fclose")(stream);
}

// Memory.

void* malloc(std::size_t size) noexcept {
    return failsOnMemory("malloc") ? nullptr : __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) noexcept {
    return failsOnMemory("malloc") ? nullptr : __libc_calloc(count, size);
}

void* realloc(void* old, std::size_t size) noexcept {
    return failsOnMemory("malloc") ? nullptr : __libc_realloc(old, size);
}

void* mmap(void* address, std::size_t size, int protection, int flags, int file,
           off_t offset) noexcept {
    if (failsOnMemory("mmap")) return MAP_FAILED;
    return next<void*(void*, std::size_t, int, int, int, off_t)>("mmap")(address, size, protection,
                                                                         flags, file, offset);
}

}  // extern "C"
