#pragma once

#ifndef _WIN32

#include <sys/resource.h>

#include <csignal>

/// While it lives, the process can write files of at most `bytes` bytes, as on a full disk.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) : oldHandler(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &oldLimit);
        const rlimit limit = {bytes, oldLimit.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &oldLimit);
        std::signal(SIGXFSZ, oldHandler);
    }

private:
    void (*oldHandler)(int);
    rlimit oldLimit = {};
};

#endif  // _WIN32
