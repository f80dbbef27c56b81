// The scenes in Irrlicht, set up in its favour: vertices on the card, no culling, since all is in view.
// Debian's build draws through GLX alone, so it needs an X server. Frames end without a swap, as everywhere
// here.

#include "Benchmarks/Peers/IrrlichtParts.h"
#include "Viewer/Bench/SceneMotion.h"

namespace {

using namespace irr;

class IrrlichtPeer : public Peer {
public:
    explicit IrrlichtPeer(PeerScene const& scene)
        : scene_(scene), device_(openIrrlicht()), manager_(*device_->getSceneManager())
    {
        addIrrlichtCamera(manager_, viewOf(scene_));
        addIrrlichtLight(manager_);
        if (scene_.isGrid())
            addGrid();
        else if (scene_.isSkinned())
            addSheets();
        else
            addChain();
        device_->run();
    }

    void prepare(int frame) override
    {
        if (top_)
            top_->setRotation(irrlichtTurnAboutZ(sgview::chain::top(frame)));
        if (scene_.moving)
            move(frame);
        for (std::size_t i = 0; i < sheets_.size(); ++i) {
            sheetNodes_[i]->setCurrentFrame(irrlichtKeyOf(sgview::sheetBend(static_cast<int>(i), frame)));
            sheets_[i]->animateMesh(sheetNodes_[i]->getFrameNr(), 1.0F);
            sheets_[i]->skinMesh();
        }
    }

    void draw() override
    {
        device_->getVideoDriver()->beginScene(true, true, video::SColor(255, 0, 0, 0));
        manager_.drawAll();
    }

private:
    void move(int frame)
    {
        for (std::size_t i = 0; i < nodes_.size(); ++i)
            nodes_[i]->setRotation(top_ ? irrlichtTurnAboutZ(stepOf(scene_, i, frame))
                                        : irrlichtTurnAboutY(turnOf(scene_, i, frame)));
    }

    void addGrid()
    {
        auto const mesh = irrlichtMesh(meshOf(scene_));
        std::vector<video::ITexture*> textures;
        if (scene_.kind == sgview::BenchSceneKind::textured)
            textures = irrlichtTextures(*device_->getVideoDriver());
        for (Vector3 const& place : placesOf(scene_)) {
            std::size_t const surface = nodes_.size();
            auto* const node = manager_.addMeshSceneNode(mesh.get(), nullptr, -1, irrlichtVector(place),
                                                         irrlichtTurnAboutY(turnOf(scene_, surface, 0)));
            node->setAutomaticCulling(scene::EAC_OFF);
            setIrrlichtColor(node->getMaterial(0), surface);
            if (!textures.empty())
                setLayers(node->getMaterial(0), textures, surface);
            nodes_.push_back(node);
        }
    }

    static void setLayers(video::SMaterial& material, std::vector<video::ITexture*> const& textures,
                          std::size_t surface)
    {
        material.MaterialType = video::EMT_LIGHTMAP_LIGHTING;
        auto const pictures = picturesOf(surface);
        for (u32 layer = 0; layer < pictures.size(); ++layer) {
            material.setTexture(layer, textures[pictures[layer]]);
            material.TextureLayer[layer].BilinearFilter = true;
            material.TextureLayer[layer].TrilinearFilter = false;
        }
    }

    void addChain()
    {
        auto const mesh = irrlichtMesh(meshOf(scene_));
        top_ = manager_.addEmptySceneNode();
        top_->setPosition(irrlichtVector(sgview::chain::middle));
        scene::ISceneNode* parent = manager_.addEmptySceneNode(top_);
        parent->setPosition(irrlichtVector(sgview::chain::middle * -1.0));
        for (int level = 0; level < scene_.count; ++level) {
            Transform const step = stepOf(scene_, nodes_.size(), 0);
            scene::ISceneNode* const node = manager_.addEmptySceneNode(parent);
            node->setPosition(irrlichtVector(step.getTranslation()));
            node->setRotation(irrlichtTurnAboutZ(step));
            node->setAutomaticCulling(scene::EAC_OFF);
            if (level % sgview::chain::levelsACube == 0) {
                auto* const cube = manager_.addMeshSceneNode(mesh.get(), node);
                cube->setAutomaticCulling(scene::EAC_OFF);
                setIrrlichtColor(cube->getMaterial(0), nodes_.size());
            }
            nodes_.push_back(node);
            parent = node;
        }
    }

    /// A mesh of its own for every sheet: Irrlicht would skin one that is shared once.
    void addSheets()
    {
        PlainMesh const mesh = meshOf(scene_);
        auto const weights = secondWeights(scene_.kind);
        for (Vector3 const& place : placesOf(scene_)) {
            auto* const sheet = irrlichtSheet(manager_, mesh, weights);
            auto* const node = manager_.addAnimatedMeshSceneNode(sheet);
            node->setPosition(irrlichtVector(place));
            node->setAnimationSpeed(0.0F);
            node->setLoopMode(false);
            node->setAutomaticCulling(scene::EAC_OFF);
            setIrrlichtColor(node->getMaterial(0), sheets_.size());
            sheets_.push_back(sheet);
            sheetNodes_.push_back(node);
            nodes_.push_back(node);
        }
    }

    PeerScene scene_;
    IrrlichtPointer<IrrlichtDevice> device_;
    scene::ISceneManager& manager_;
    scene::ISceneNode* top_ = nullptr; ///< of a chain
    std::vector<scene::ISceneNode*> nodes_;
    std::vector<scene::ISkinnedMesh*> sheets_;
    std::vector<scene::IAnimatedMeshSceneNode*> sheetNodes_;
};

} // namespace

int main(int argc, char** argv)
{
    return runPeer(argc, argv, "Irrlicht " IRRLICHT_SDK_VERSION, true,
                   [](PeerScene const& scene) { return std::make_unique<IrrlichtPeer>(scene); });
}
