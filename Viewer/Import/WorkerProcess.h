#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include <sys/types.h>

namespace sgview {

/// This program, started once more as a child whose only way out is a pipe. The destructor ends the child and
/// waits for it.
class WorkerProcess {
public:
    /// \param arguments  the program's name first
    /// \throws ImportError  crashed: the system grants no pipe or process
    explicit WorkerProcess(std::vector<std::string> const& arguments);
    WorkerProcess(WorkerProcess const&) = delete;
    WorkerProcess& operator=(WorkerProcess const&) = delete;
    ~WorkerProcess();

    enum class Output { some, nothing, ended };

    /// Appends what the child has sent; waits for it no longer than `wait`.
    Output read(std::vector<std::uint8_t>& received, std::chrono::milliseconds wait);

    /// How the child ended.
    struct End {
        bool known = false;
        int status = 0;
        int signal = 0;
    };

    /// Waits for the child's end; after `deadline` it is not known.
    End waitUntil(std::chrono::steady_clock::time_point deadline);

    /// Bytes of memory that the child holds; 0 where that cannot be found out.
    [[nodiscard]] std::uint64_t residentMemory() const;

private:
    End reap();

    pid_t process_ = -1;
    int pipe_ = -1;
};

} // namespace sgview
