#pragma once

#include "Viewer/Import/ImportOptions.h"
#include "Viewer/Import/Model.h"
#include "Viewer/Import/SourceFiles.h"

#include <atomic>
#include <chrono>
#include <exception>
#include <filesystem>
#include <optional>
#include <stop_token>
#include <thread>

namespace sgview {

/// A supervised import that goes on in a thread of its own. The destructor stops it and waits.
class ModelLoad {
public:
    ModelLoad(std::filesystem::path file, ImportOptions options);

    [[nodiscard]] std::filesystem::path const& file() const { return file_; }
    [[nodiscard]] bool isDone() const { return done_; }

    /// Since it began.
    [[nodiscard]] std::chrono::duration<double> elapsed() const;

    /// Bytes of the model that have come so far; 0 while the file is being read.
    [[nodiscard]] std::uint64_t received() const { return received_; }

    /// Asks the import to stop; it is done a moment later.
    void cancel() { thread_.request_stop(); }

    /// What came of it, once it is done.
    /// \throws ImportError, std::bad_alloc
    [[nodiscard]] Model take();

    /// The files besides its own that the model depends on, once it is done; even where no model came of it,
    /// if they came to be known.
    [[nodiscard]] std::optional<SourceFiles> const& sources() const { return sources_; }

private:
    void run(std::stop_token const& stop);

    std::filesystem::path file_;
    ImportOptions options_;
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    std::atomic<std::uint64_t> received_ = 0;
    std::atomic<bool> done_ = false;
    std::optional<Model> model_; ///< what thread_ leaves, as are sources_ and failure_
    std::optional<SourceFiles> sources_;
    std::exception_ptr failure_;
    std::jthread thread_;
};

} // namespace sgview
