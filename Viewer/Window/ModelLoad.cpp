#include "Viewer/Window/ModelLoad.h"

#include "Viewer/Import/ImportSupervisor.h"

#include <utility>

namespace sgview {

ModelLoad::ModelLoad(std::filesystem::path file, ImportOptions options)
    : file_(std::move(file)),
      options_(std::move(options)),
      thread_([this](std::stop_token const& stop) { run(stop); })
{
}

std::chrono::duration<double> ModelLoad::elapsed() const
{
    return std::chrono::steady_clock::now() - start_;
}

Model ModelLoad::take()
{
    thread_.join();
    if (failure_)
        std::rethrow_exception(failure_);
    return std::move(*model_);
}

void ModelLoad::run(std::stop_token const& stop)
{
    try {
        model_ = superviseImport(file_, options_, {stop, &received_, &sources_});
    } catch (...) {
        failure_ = std::current_exception();
    }
    done_ = true;
}

} // namespace sgview
