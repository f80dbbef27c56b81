#pragma once

#include <chrono>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <sys/types.h>

namespace sgview {

/// The descriptor through which a worker sends.
inline constexpr int workerDescriptor = 3;

/// Sends from a worker to the process that started it. Ends the worker where nobody listens any more.
void sendToParent(std::span<std::uint8_t const> bytes);
void sendToParent(std::string_view text);

/// This program, started once more as a child whose only way out is a pipe. The child ends with the thread
/// that started it; the destructor ends it and waits for it.
class WorkerProcess {
public:
    /// What becomes of that which the child writes to standard error.
    enum class Errors { discarded, kept };

    /// \param arguments  the program's name first
    /// \throws std::system_error  the system grants no pipe or process
    explicit WorkerProcess(std::vector<std::string> const& arguments, Errors errors = Errors::discarded);
    WorkerProcess(WorkerProcess const&) = delete;
    WorkerProcess& operator=(WorkerProcess const&) = delete;
    ~WorkerProcess();

    enum class Output { some, nothing, ended };

    /// Appends what the child has sent; waits for it no longer than `wait`.
    Output read(std::vector<std::uint8_t>& received, std::chrono::milliseconds wait);

    /// The last that the child wrote to standard error, if it was to be kept.
    [[nodiscard]] std::string const& errors() const { return errors_; }

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
    void keepErrors();

    pid_t process_ = -1;
    int pipe_ = -1;
    int errorPipe_ = -1; ///< none where errors are discarded
    std::string errors_;
};

} // namespace sgview
