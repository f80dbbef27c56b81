#include "Viewer/Output/FilmCamera.h"

#include "Tests/Command/Sgview.h"
#include "Viewer/Import/Importer.h"

#include <algorithm>
#include <cmath>
#include <iomanip>
#include <sstream>

namespace {

using sgview::CameraView;

class FilmCamera : public SgviewTest {
protected:
    /// How far vertices reach from the middle of the picture; its edge is at 1.
    [[nodiscard]] double reachOf(CameraView const& view, bool turns) const
    {
        sgview::ModelScene scene(sgview::importModel(folder / "tent.obj", {}), {});
        sgview::FilmCamera const camera(scene, sgview::none, view, turns, 100, 100);
        camera.aim(scene, 0.0);
        CameraBase const& seen = *scene.cameraNode()->camera;
        Matrix const all = seen.projection * seen.view;
        double reach = 0.0;
        for (Vector3 const& point : scene.posedVertices()) {
            double const w = all(3, 0) * point.x + all(3, 1) * point.y + all(3, 2) * point.z + all(3, 3);
            Vector3 const place = transformPoint(all, point) * (1.0 / w);
            reach = std::max({reach, std::abs(place.x), std::abs(place.y)});
        }
        return reach;
    }

    /// A tent on a square base, its tip towards whoever looks.
    void writeTent(CameraView const& view) const
    {
        std::ostringstream text;
        text << std::setprecision(9);
        Matrix3 const toWorld = transpose(viewRotation(view));
        for (Vector3 const& corner :
             {Vector3(1, 0, 0), Vector3(0, 1, 0), Vector3(-1, 0, 0), Vector3(0, -1, 0), Vector3(0, 0, 40)}) {
            Vector3 const place = toWorld * corner;
            text << "v " << place.x << ' ' << place.y << ' ' << place.z << '\n';
        }
        text << "f 1 2 5\nf 2 3 5\nf 3 4 5\nf 4 1 5\n";
        writeFile("tent.obj", text.str());
    }
};

TEST_F(FilmCamera, HasAllInViewWithAndWithoutPerspective)
{
    for (CameraView const& view : {CameraView{45.0, 35.0}, CameraView{45.0, 35.0, 1.0, CameraView::Up::z},
                                   CameraView{45.0, 35.0, 1.0, CameraView::Up::y, true},
                                   CameraView{45.0, 35.0, 1.0, CameraView::Up::x, true}}) {
        writeTent(view);
        double const reach = reachOf(view, false);
        EXPECT_LT(reach, 1.0) << nameOf(view.up) << view.orthographic;
        if (view.orthographic) { // in perspective the tip holds the camera off
            EXPECT_GT(reach, 0.9) << nameOf(view.up);
        }
        EXPECT_LT(reachOf(view, true), 1.0) << nameOf(view.up) << view.orthographic;
    }
}

} // namespace
