// The scenes in OpenSceneGraph, set up in its favour: no culling, since all is in view, no near and far plane
// to find, no question for OpenGL's errors, one thread, surfaces of the same pictures grouped.

#include "Benchmarks/Peers/OpenSceneGraphParts.h"
#include "Viewer/Bench/SceneMotion.h"

#include <osg/MatrixTransform>
#include <osg/Version>
#include <osgAnimation/Bone>
#include <osgAnimation/RigGeometry>
#include <osgAnimation/RigTransformSoftware>
#include <osgAnimation/Skeleton>
#include <osgViewer/Viewer>

namespace {

class OpenSceneGraphPeer : public Peer {
public:
    explicit OpenSceneGraphPeer(PeerScene const& scene) : scene_(scene), root_(osgRoot())
    {
        if (scene_.isGrid())
            addGrid();
        else if (scene_.isSkinned())
            addSheets();
        else
            addChain();
        openView();
    }

    void prepare(int frame) override
    {
        if (top_)
            top_->setMatrix(osgMatrix(sgview::chain::top(frame)));
        if (scene_.moving)
            move(frame);
        for (std::size_t i = 0; i < bones_.size(); ++i) {
            double const bend = sgview::sheetBend(static_cast<int>(i / 2), frame);
            bones_[i]->setMatrixInSkeletonSpace(osgMatrix(i % 2 == 0 ? bend : -bend, Vector3()));
        }
        viewer_.advance(frame / 60.0);
        viewer_.eventTraversal();
        viewer_.updateTraversal();
    }

    void draw() override { viewer_.renderingTraversals(); }

private:
    void move(int frame)
    {
        for (std::size_t i = 0; i < transforms_.size(); ++i)
            transforms_[i]->setMatrix(top_ ? osgMatrix(stepOf(scene_, i, frame))
                                           : osgMatrix(turnOf(scene_, i, frame), places_[i]));
    }

    osg::MatrixTransform& addTransform(osg::Group& parent, osg::Matrix const& matrix)
    {
        osg::ref_ptr<osg::MatrixTransform> const transform = new osg::MatrixTransform(matrix);
        parent.addChild(transform);
        transforms_.push_back(transform);
        return *transform;
    }

    /// A group for each pair of pictures that surfaces have.
    std::vector<osg::ref_ptr<osg::Group>> addTextureGroups()
    {
        auto const textures = osgTextures();
        std::vector<osg::ref_ptr<osg::Group>> groups;
        for (std::size_t i = 0; i < pictureCount; ++i) {
            groups.push_back(new osg::Group);
            root_->addChild(groups.back());
            auto const pictures = picturesOf(i);
            for (unsigned layer = 0; layer < pictures.size(); ++layer)
                groups.back()->getOrCreateStateSet()->setTextureAttributeAndModes(
                    layer, textures[pictures[layer]], osg::StateAttribute::ON);
        }
        return groups;
    }

    void addGrid()
    {
        auto const geometry = osgGeometry(meshOf(scene_));
        std::vector<osg::ref_ptr<osg::Group>> groups{root_};
        if (scene_.kind == sgview::BenchSceneKind::textured)
            groups = addTextureGroups();
        places_ = placesOf(scene_);
        for (std::size_t i = 0; i < places_.size(); ++i) {
            auto& transform =
                addTransform(*groups[i % groups.size()], osgMatrix(turnOf(scene_, i, 0), places_[i]));
            transform.getOrCreateStateSet()->setAttribute(osgMaterial(i));
            transform.addChild(geometry);
        }
    }

    void addChain()
    {
        auto const geometry = osgGeometry(meshOf(scene_));
        top_ = new osg::MatrixTransform;
        root_->addChild(top_);
        osg::Group* parent = top_;
        for (int level = 0; level < scene_.count; ++level) {
            auto const index = static_cast<std::size_t>(level);
            auto& transform = addTransform(*parent, osgMatrix(stepOf(scene_, index, 0)));
            if (level % sgview::chain::levelsACube == 0) {
                osg::ref_ptr<osg::Group> const cube = new osg::Group;
                cube->getOrCreateStateSet()->setAttribute(osgMaterial(index));
                cube->addChild(geometry);
                transform.addChild(cube);
            }
            parent = &transform;
        }
    }

    void addSheets()
    {
        auto const sheet = osgGeometry(meshOf(scene_));
        sheet->setDataVariance(osg::Object::STATIC);
        auto const influences = makeInfluences();
        places_ = placesOf(scene_);
        for (std::size_t i = 0; i < places_.size(); ++i) {
            auto& transform = addTransform(*root_, osgMatrix(turnOf(scene_, i, 0), places_[i]));
            transform.getOrCreateStateSet()->setAttribute(osgMaterial(i));
            osg::ref_ptr<osgAnimation::Skeleton> const skeleton = new osgAnimation::Skeleton;
            skeleton->setUpdateCallback(nullptr);
            transform.addChild(skeleton);
            for (char const* const name : boneNames)
                addBone(*skeleton, name);
            skeleton->addChild(makeRig(*sheet, *influences));
        }
    }

    void addBone(osgAnimation::Skeleton& skeleton, char const* name)
    {
        osg::ref_ptr<osgAnimation::Bone> const bone = new osgAnimation::Bone(name);
        bone->setInvBindMatrixInSkeletonSpace(osg::Matrix::identity());
        bone->setUpdateCallback(nullptr);
        skeleton.addChild(bone);
        bones_.push_back(bone);
    }

    osg::ref_ptr<osgAnimation::VertexInfluenceMap> makeInfluences() const
    {
        osg::ref_ptr<osgAnimation::VertexInfluenceMap> map = new osgAnimation::VertexInfluenceMap;
        std::vector<double> const second = secondWeights(scene_.kind);
        for (std::size_t bone = 0; bone < boneNames.size(); ++bone) {
            osgAnimation::VertexInfluence& influence = (*map)[boneNames[bone]];
            influence.setName(boneNames[bone]);
            for (std::size_t i = 0; i < second.size(); ++i)
                influence.emplace_back(static_cast<unsigned>(i),
                                       static_cast<float>(bone == 0 ? 1.0 - second[i] : second[i]));
        }
        return map;
    }

    static osg::ref_ptr<osgAnimation::RigGeometry> makeRig(osg::Geometry& sheet,
                                                           osgAnimation::VertexInfluenceMap& influences)
    {
        osg::ref_ptr<osgAnimation::RigGeometry> rig = new osgAnimation::RigGeometry;
        rig->setSourceGeometry(&sheet);
        rig->copyFrom(sheet);
        rig->setInfluenceMap(&influences);
        rig->setRigTransformImplementation(new osgAnimation::RigTransformSoftware);
        rig->setUseDisplayList(false);
        rig->setUseVertexBufferObjects(true);
        rig->setComputeBoundingBoxCallback(nullptr);
        rig->setInitialBound({-1.0F, -1.0F, -1.0F, 1.0F, 1.0F, 1.0F});
        return rig;
    }

    void openView()
    {
        viewer_.setThreadingModel(osgViewer::Viewer::SingleThreaded);
        viewer_.setUpViewerAsEmbeddedInWindow(0, 0, BenchRun::width, BenchRun::height);
        viewer_.setLightingMode(osg::View::NO_LIGHT);
        viewer_.setSceneData(root_);
        auto const [eye, near, far] = viewOf(scene_);
        osg::Camera& camera = *viewer_.getCamera();
        camera.setComputeNearFarMode(osg::CullSettings::DO_NOT_COMPUTE_NEAR_FAR);
        camera.setCullingMode(osg::CullSettings::NO_CULLING);
        camera.setProjectionMatrixAsPerspective(45.0, 1.0, near, far);
        camera.setViewMatrix(osg::Matrix::translate(-eye.x, -eye.y, -eye.z));
        camera.setClearColor({0.0F, 0.0F, 0.0F, 1.0F});
        viewer_.realize();
        osgViewer::Viewer::Windows windows;
        viewer_.getWindows(windows);
        for (osgViewer::GraphicsWindow* const window : windows)
            window->getState()->setCheckForGLErrors(osg::State::NEVER_CHECK_GL_ERRORS);
    }

    static constexpr std::array<char const*, 2> boneNames{"first", "second"};

    PeerScene scene_;
    osg::ref_ptr<osg::Group> root_;
    osg::ref_ptr<osg::MatrixTransform> top_; ///< of a chain
    std::vector<osg::ref_ptr<osg::MatrixTransform>> transforms_;
    std::vector<Vector3> places_;
    std::vector<osg::ref_ptr<osgAnimation::Bone>> bones_; ///< two a sheet
    osgViewer::Viewer viewer_;
};

} // namespace

int main(int argc, char** argv)
{
    osg::setNotifyLevel(osg::WARN);
    return runPeer(argc, argv, std::string("OpenSceneGraph ") + osgGetVersion(), false,
                   [](PeerScene const& scene) { return std::make_unique<OpenSceneGraphPeer>(scene); });
}
