#pragma once

#include <unistd.h>

#include <utility>

/// Owns an open file of the operating system.
class FileDescriptor {
public:
    /// \param number  as open() returns it: negative for none
    explicit FileDescriptor(int number) : number_(number) {}
    FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&&) = delete;
    ~FileDescriptor()
    {
        if (number_ >= 0)
            close(number_);
    }

    [[nodiscard]] int get() const { return number_; }
    [[nodiscard]] bool isOpen() const { return number_ >= 0; }

private:
    int number_;
};
