#pragma once

#include "Utilities/FileDescriptor.h"

#include <chrono>
#include <filesystem>

/// Keeps other processes out for as long as it lives: an exclusive lock on a file made for the purpose. The
/// file stays behind, or a waiting process could lock one that is no longer there.
class FileLock {
public:
    /// Throws std::system_error if the file cannot be made, or others have kept the lock for `patience`.
    explicit FileLock(std::filesystem::path const& file,
                      std::chrono::milliseconds patience = std::chrono::seconds(5));
    ~FileLock();

    FileLock(FileLock const&) = delete;
    FileLock& operator=(FileLock const&) = delete;

private:
    FileDescriptor file_;
};
