#include "Utilities/FileLock.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <system_error>
#include <thread>

namespace {

constexpr auto pollInterval = std::chrono::milliseconds(2);

[[noreturn]] void fail(std::filesystem::path const& file)
{
    throw std::system_error(errno, std::generic_category(), file.string());
}

} // namespace

// Without O_NONBLOCK a pipe under the lock's name could hang the process.
FileLock::FileLock(std::filesystem::path const& file, std::chrono::milliseconds patience)
    : file_(open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600))
{
    if (!file_.isOpen())
        fail(file);
    auto const deadline = std::chrono::steady_clock::now() + patience;
    while (flock(file_.get(), LOCK_EX | LOCK_NB) != 0) {
        bool const busy = errno == EWOULDBLOCK || errno == EINTR;
        if (!busy || std::chrono::steady_clock::now() >= deadline)
            fail(file);
        std::this_thread::sleep_for(pollInterval);
    }
}

// Closing alone would leave the lock to a child process that was forked meanwhile.
FileLock::~FileLock()
{
    flock(file_.get(), LOCK_UN);
}
