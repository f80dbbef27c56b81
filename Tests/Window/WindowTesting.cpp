#include "Tests/Window/WindowTesting.h"

#include "Tests/Frame/PngReader.h"
#include "Viewer/Platform/PictureDifference.h"
#include "Viewer/Platform/PngWriter.h"

#include <X11/keysym.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <thread>

namespace {

namespace fs = std::filesystem;

fs::path makeFolder()
{
    std::string name = (fs::temp_directory_path() / "sgview-window-XXXXXX").string();
    return ::mkdtemp(name.data());
}

std::string inWords(sgview::PictureSize size)
{
    return std::to_string(size.width) + "x" + std::to_string(size.height);
}

void waitAMoment()
{
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
}

} // namespace

bool isInstalled(std::string const& program)
{
    char const* const path = std::getenv("PATH");
    std::string rest = path ? path : "";
    for (std::size_t end = 0; !rest.empty(); rest.erase(0, end == std::string::npos ? end : end + 1)) {
        end = rest.find(':');
        std::error_code ignored;
        if (fs::exists(fs::path(rest.substr(0, end)) / program, ignored))
            return true;
    }
    return false;
}

sgview::Picture cut(sgview::Picture const& picture, Region const& region)
{
    sgview::Picture part({region.width, region.height});
    auto const rowOf = [](sgview::Picture const& p) { return static_cast<std::size_t>(p.size.width) * 4; };
    for (int y = 0; y < region.height; ++y)
        std::copy_n(picture.pixels.begin() +
                        static_cast<std::ptrdiff_t>(rowOf(picture) * static_cast<std::size_t>(region.y + y) +
                                                    static_cast<std::size_t>(region.x) * 4),
                    rowOf(part),
                    part.pixels.begin() +
                        static_cast<std::ptrdiff_t>(rowOf(part) * static_cast<std::size_t>(y)));
    return part;
}

double shareOtherThan(sgview::Picture const& picture, int r, int g, int b)
{
    std::size_t other = 0;
    for (std::size_t i = 0; i < picture.pixels.size(); i += 4)
        if (picture.pixels[i] != r || picture.pixels[i + 1] != g || picture.pixels[i + 2] != b)
            ++other;
    return 4.0 * static_cast<double>(other) / static_cast<double>(picture.pixels.size());
}

double difference(sgview::Picture const& a, sgview::Picture const& b)
{
    return sgview::measureDifference(a, b).share();
}

std::vector<MeanColor> means(sgview::Picture const& picture, int side)
{
    std::vector<MeanColor> all;
    for (int top = 0; top + side <= picture.size.height; top += side)
        for (int left = 0; left + side <= picture.size.width; left += side) {
            MeanColor sum{};
            for (int y = top; y < top + side; ++y)
                for (int x = left; x < left + side; ++x)
                    for (std::size_t c = 0; c < 3; ++c)
                        sum[c] +=
                            picture.pixels[static_cast<std::size_t>(y * picture.size.width + x) * 4 + c];
            for (double& component : sum)
                component /= side * side;
            all.push_back(sum);
        }
    return all;
}

double farthest(std::vector<MeanColor> const& a, std::vector<MeanColor> const& b)
{
    EXPECT_EQ(a.size(), b.size());
    double most = 0.0;
    for (std::size_t i = 0; i < std::min(a.size(), b.size()); ++i)
        for (std::size_t c = 0; c < 3; ++c)
            most = std::max(most, std::abs(a[i][c] - b[i][c]));
    return most;
}

WindowTest::WindowTest() : folder(makeFolder()), home(folder / "home")
{
    fs::create_directory(home);
}

WindowTest::~WindowTest()
{
    program.reset();
    user.reset();
    server.reset();
    std::error_code ignored;
    fs::remove_all(folder, ignored);
}

void WindowTest::TearDown()
{
    if (!HasFailure() || !user)
        return;
    try {
        fs::create_directories(WINDOW_FAILURES);
        fs::path const file =
            fs::path(WINDOW_FAILURES) /
            (testing::UnitTest::GetInstance()->current_test_info()->name() + std::string(".png"));
        sgview::writePng(file, user->look());
        ADD_FAILURE() << "what the window showed last: " << file.string() << "\n" << errors();
    } catch (std::exception const& error) {
        ADD_FAILURE() << error.what();
    }
}

void WindowTest::SetUp()
{
    if (!isInstalled("Xvfb"))
        GTEST_SKIP() << "Xvfb is not installed";
    startDisplay({1280, 900});
}

void WindowTest::startDisplay(sgview::PictureSize size)
{
    std::string const screen = inWords(size) + "x24";
    server = std::make_unique<Process>(
        std::vector<std::string>{"Xvfb", "-displayfd", "1", "-screen", "0", screen, "-nolisten", "tcp"},
        Environment{}, (folder / "server").string());
    display = ":" + server->readLine();
    ASSERT_NE(display, ":") << "Xvfb does not start";
    user = std::make_unique<FakeUser>(display);
}

WindowTest::Environment WindowTest::displayEnvironment() const
{
    return {{"DISPLAY", display}, {"WAYLAND_DISPLAY", std::nullopt}};
}

void WindowTest::open(std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), SGVIEW);
    if (std::ranges::find(arguments, "--size") == arguments.end())
        arguments.insert(arguments.end(), {"--size", inWords(windowSize)});
    Environment environment{{"SDL_VIDEODRIVER", std::nullopt},
                            {"HOME", home.string()},
                            {"XDG_CONFIG_HOME", std::nullopt},
                            {"XDG_PICTURES_DIR", std::nullopt},
                            {"LIBGL_ALWAYS_SOFTWARE", "1"}};
    environment.merge(displayEnvironment());
    program = std::make_unique<Process>(arguments, environment, (folder / "errors").string());
    ASSERT_TRUE(eventually([this] { return user->findWindow() || program->status(); }));
    ASSERT_FALSE(program->status()) << errors();
    user->moveTo(windowSize.width / 3, windowSize.height / 3);
    ASSERT_TRUE(eventually([this] { return shareOtherThan(user->look(), 0, 0, 0) > 0.5; }))
        << "nothing drawn";
}

void WindowTest::openModel(std::string const& file, std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), file);
    ASSERT_NO_FATAL_FAILURE(open(std::move(arguments)));
    awaitFile(fs::path(file).filename().string());
}

void WindowTest::awaitFile(std::string const& name) const
{
    ASSERT_TRUE(eventually([&] { return user->title() == name + " - sgview"; })) << user->title() << errors();
    static_cast<void>(still(scene));
}

void WindowTest::quitWell()
{
    user->type(XK_q);
    ASSERT_TRUE(eventually([this] { return program->status().has_value(); }));
    EXPECT_EQ(program->status(), 0);
    EXPECT_EQ(errors(), "");
}

bool WindowTest::eventually(std::function<bool()> const& condition)
{
    auto const deadline = std::chrono::steady_clock::now() + std::chrono::seconds(40);
    while (std::chrono::steady_clock::now() < deadline) {
        if (condition())
            return true;
        waitAMoment();
    }
    return condition();
}

sgview::Picture WindowTest::look(Region const& region) const
{
    return cut(user->look(), region);
}

bool WindowTest::isResting() const
{
    return program->isResting() && server->isResting();
}

sgview::Picture WindowTest::still(Region const& region) const
{
    constexpr int enough = 8;
    sgview::Picture last = look(region);
    int same = 0;
    EXPECT_TRUE(eventually([&] {
        bool const rests = isResting();
        sgview::Picture next = look(region);
        same = rests && next.pixels == last.pixels ? same + 1 : 0;
        last = std::move(next);
        return same == enough;
    })) << "never keeps still";
    return last;
}

sgview::Picture WindowTest::changed(Region const& region, sgview::Picture const& from) const
{
    EXPECT_TRUE(eventually([&] { return look(region).pixels != from.pixels; })) << "nothing changes";
    return still(region);
}

bool WindowTest::returnsTo(Region const& region, sgview::Picture const& picture) const
{
    constexpr double singlePixels = 1e-3;
    return eventually([&] { return difference(look(region), picture) < singlePixels; });
}

sgview::Picture WindowTest::draw(std::vector<std::string> arguments, sgview::PictureSize size) const
{
    std::string const output = (folder / "drawn.png").string();
    arguments.insert(arguments.begin(), SGVIEW);
    arguments.insert(arguments.end(), {"--output", output, "--size", inWords(size)});
    Process drawing(arguments, {{"HOME", home.string()}, {"XDG_CONFIG_HOME", std::nullopt}},
                    (folder / "drawing-errors").string());
    EXPECT_TRUE(eventually([&] { return drawing.status().has_value(); }));
    EXPECT_EQ(drawing.status(), 0);
    return readPng(output);
}

bool WindowTest::fallsIdle() const
{
    // What was being drawn is drawn; from then on nothing is.
    return eventually([this] {
        double const before = program->processorTime();
        std::this_thread::sleep_for(std::chrono::seconds(1));
        return program->processorTime() - before < 0.1;
    });
}

std::string WindowTest::errors() const
{
    std::ifstream stream(folder / "errors", std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<fs::path> WindowTest::keptPictures() const
{
    std::vector<fs::path> files;
    std::error_code error;
    for (fs::directory_iterator entry(home / "Pictures", error), end; !error && entry != end;
         entry.increment(error))
        if (entry->path().extension() == ".png") // what is being written has another name
            files.push_back(entry->path());
    std::ranges::sort(files);
    return files;
}

sgview::Picture WindowTest::keep(bool withPanel)
{
    std::vector<fs::path> const before = keptPictures();
    user->type(XK_p, withPanel);
    std::vector<fs::path> added;
    EXPECT_TRUE(eventually([&] {
        added.clear(); // names do not tell which is newer
        std::ranges::set_difference(keptPictures(), before, std::back_inserter(added));
        return !added.empty();
    }));
    EXPECT_EQ(added.size(), 1u);
    return added.empty() ? sgview::Picture({}) : readPng(added.front());
}
