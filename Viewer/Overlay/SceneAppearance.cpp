#include "Viewer/Overlay/SceneAppearance.h"

#include "SceneGraph/SGSurfaceGeometryReferenceNode.h"

#include <cstdio>

namespace sgview {

namespace {

/// Shape shows through the ramp's colours, but does not outweigh them.
Material influenceMaterial()
{
    Material material;
    material.ambient = {0.3F, 0.3F, 0.3F, 1.0F};
    material.diffuse = {0.55F, 0.55F, 0.55F, 1.0F};
    material.specular = {0.0F, 0.0F, 0.0F, 1.0F};
    material.emissive = {0.45F, 0.45F, 0.45F, 1.0F};
    return material;
}

template <typename Overlay>
void show(std::unique_ptr<Overlay>& overlay, bool wanted, ModelScene& scene, OverlayStyle const& style)
{
    if (!wanted)
        overlay.reset();
    else if (!overlay)
        overlay = std::make_unique<Overlay>(scene, style);
}

std::string inShort(double number)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.4g", number);
    return text;
}

} // namespace

SceneAppearance::SceneAppearance(ModelScene& scene)
    : scene_(scene), materials_(scene.model()), influences_(scene.instance())
{
    for (std::size_t i = 0; i < scene.instance().partCount(); ++i)
        layers_.push_back(scene.instance().part(i).drawn->textureLayers);
    style_.model = scene.bounds();
}

void SceneAppearance::update(DisplayOptions const& options, Vector3 const& up, double pixelsPerPoint)
{
    Dress const dress{
        options.wireframe,    options.unlit,        options.influences && !influences_.bones().empty(),
        influences_.chosen(), materials_.version(), pixelsPerPoint};
    if (dress_ != dress) {
        dress_ = dress;
        for (std::size_t i = 0; i < scene_.instance().partCount(); ++i)
            this->dress(i);
    }
    updateStyle(options, up, pixelsPerPoint);
    updateOverlays(options);
}

void SceneAppearance::updateStyle(DisplayOptions const& options, Vector3 const& up, double pixelsPerPoint)
{
    OverlayStyle const style{style_.model, up, options.background, pixelsPerPoint};
    if (style == style_)
        return;
    style_ = style;
    normals_.reset();
    skeleton_.reset();
    axes_.reset();
    grid_.reset();
}

void SceneAppearance::dress(std::size_t part)
{
    ModelInstance& instance = scene_.instance();
    ModelPart const& item = instance.part(part);
    MaterialLook const& look = materials_.look(static_cast<std::size_t>(item.material));
    auto* const surface = dynamic_cast<SGSurfaceGeometryReferenceNode*>(item.drawn.get());
    bool const isUnlit = !surface || look.unlit || dress_->unlit;

    item.drawn->lineWidth = dress_->lineWidth;
    item.drawn->material = look.material;
    // A texture shows through an unlit surface's glColor, which is the ambient colour.
    if (isUnlit)
        item.drawn->material.setAmbientAndDiffuse(look.material.diffuse);
    item.drawn->textureLayers = layers_[part];
    instance.setBlending(part, look.blending);
    if (!surface)
        return;
    surface->unlit = isUnlit;
    surface->wireframe = dress_->wireframe;
    if (dress_->influences)
        dressInInfluences(part);
}

void SceneAppearance::dressInInfluences(std::size_t part)
{
    auto* const surface =
        static_cast<SGSurfaceGeometryReferenceNode*>(scene_.instance().part(part).drawn.get());
    surface->textureLayers.clear();
    surface->material = influenceMaterial();
    surface->unlit = dress_->unlit;
    scene_.instance().setBlending(part, false);
    std::optional<SGTextureLayer> layer = influences_.layer(part);
    if (layer) {
        if (surface->unlit)
            surface->material.setAmbientAndDiffuse({1.0F, 1.0F, 1.0F, 1.0F});
        surface->textureLayers.push_back(std::move(*layer));
        return;
    }
    // No bone holds this: edges cannot be taken for a colour of the ramp.
    surface->wireframe = true;
    surface->material.setAmbientAndDiffuse({0.5F, 0.5F, 0.5F, 1.0F});
}

void SceneAppearance::updateOverlays(DisplayOptions const& options)
{
    show(grid_, options.grid, scene_, style_);
    show(normals_, options.normals, scene_, style_);
    show(axes_, options.axes, scene_, style_);
    show(skeleton_, options.skeleton, scene_, style_);
    if (normals_)
        normals_->update();
    if (skeleton_)
        skeleton_->update();
}

std::vector<OverlayLabel> SceneAppearance::labels() const
{
    if (!axes_)
        return {};
    return {axes_->labels().begin(), axes_->labels().end()};
}

std::vector<std::string> SceneAppearance::legend() const
{
    std::vector<std::string> lines;
    if (grid_) {
        char const* const axis = style_.up.x != 0.0 ? "x" : style_.up.y != 0.0 ? "y" : "z";
        lines.push_back("grid: squares of " + inShort(grid_->side()) + ", at " + axis + " = " +
                        inShort(grid_->height()));
    }
    if (normals_)
        lines.push_back(normals_->step() == 1
                            ? "normals: one a vertex"
                            : "normals: one for every " + std::to_string(normals_->step()) + " vertices");
    if (axes_)
        lines.push_back("axes: x plain, y dashed, z dotted");
    if (skeleton_)
        lines.push_back(scene_.model().skins.empty() ? "skeleton: no bones, so nodes"
                                                     : "skeleton: bones point to the next joint");
    return lines;
}

Bounds SceneAppearance::overlayBounds() const
{
    Bounds bounds;
    if (grid_)
        bounds.add(grid_->bounds());
    if (axes_)
        for (OverlayLabel const& label : axes_->labels())
            bounds.add(label.place);
    if (normals_) {
        // Lines stick out of the model by their length.
        Vector3 const reach = Vector3(1.0, 1.0, 1.0) * (style_.size() * NormalOverlay::relativeLength);
        bounds.add(style_.model.low - reach);
        bounds.add(style_.model.high + reach);
    }
    return bounds;
}

} // namespace sgview
