#include "Viewer/Window/Document.h"

#include "Viewer/Import/ImportError.h"

#include <exception>
#include <new>
#include <utility>

namespace sgview {

Document::Document(ImportOptions import, SceneOptions scene)
    : import_(std::move(import)), options_(std::move(scene))
{
}

void Document::open(std::filesystem::path const& file)
{
    wanted_ = file;
    begin(file);
}

void Document::reload()
{
    if (!wanted_.empty())
        begin(wanted_);
}

void Document::begin(std::filesystem::path const& file)
{
    // Before reading: what is written meanwhile counts as a change.
    if (watch_.file() == file)
        watch_.accept();
    else
        watch_ = FileWatch(file);
    load_ = std::make_unique<ModelLoad>(file, import_);
}

void Document::cancel()
{
    if (load_)
        load_->cancel();
}

DocumentNews Document::look(FileWatch::Time now)
{
    if (load_)
        return load_->isDone() ? finish() : DocumentNews::nothing;
    if (watch_.hasChanged(now))
        reload();
    return DocumentNews::nothing;
}

DocumentNews Document::finish()
{
    std::unique_ptr<ModelLoad> const load = std::move(load_);
    if (load->sources())
        watch_.follow(*load->sources());
    try {
        Model model = load->take();
        ModelCounts const counts = countsOf(model);
        auto scene = std::make_unique<ModelScene>(std::move(model), options_);
        appearance_ = std::make_unique<SceneAppearance>(*scene);
        scene_ = std::move(scene);
        counts_ = counts;
        ++generation_;
    } catch (ImportError const& error) {
        failure_ = error.what();
        return error.failure() == ImportFailure::cancelled ? DocumentNews::cancelled : DocumentNews::failed;
    } catch (std::bad_alloc const&) {
        failure_ = load->file().string() + ": out of memory";
        return DocumentNews::failed;
    } catch (std::exception const& error) {
        failure_ = error.what();
        return DocumentNews::failed;
    }
    failure_.clear();
    prepare(none);
    return std::exchange(file_, load->file()) == load->file() ? DocumentNews::reloaded : DocumentNews::opened;
}

void Document::prepare(Index animation)
{
    constexpr int samples = 8;
    constexpr double margin = 0.1; // of the size, for what lies between the samples
    bounds_ = {};
    if (animation != none) {
        double const length = scene_->model().animations[static_cast<std::size_t>(animation)].length;
        for (int i = 0; i <= samples; ++i) {
            scene_->pose(animation, length * i / samples);
            bounds_.add(scene_->bounds());
        }
    }
    scene_->pose(none, 0.0);
    bounds_.add(scene_->bounds());
    if (bounds_.empty())
        return;
    Vector3 const grown = (bounds_.high - bounds_.low) * margin;
    bounds_.low -= grown;
    bounds_.high += grown;
}

} // namespace sgview
