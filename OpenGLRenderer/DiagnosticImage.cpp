#include "OpenGLRenderer/DiagnosticImage.h"

#include "OpenGLRenderer/Renderer.h"
#include "Utilities/Log.h"
#include "Utilities/Strings.h"

#include <cstddef>

namespace {

constexpr std::size_t bytesPerPixel = 4;
constexpr std::size_t pixelCount = std::size_t{Diagnostic::testImageSide} * Diagnostic::testImageSide;
constexpr std::size_t byteCount = pixelCount * bytesPerPixel;

constexpr int smallestMismatch = 101; // squared distance
constexpr int onePercent = 2621;      // of the pixels, rounded down
constexpr double toleratedShare = 0.01;

bool isWhite(unsigned char const* pixel)
{
    return pixel[0] == 255 && pixel[1] == 255 && pixel[2] == 255;
}

} // namespace

std::vector<unsigned char> Diagnostic::readTestImage()
{
    std::vector<unsigned char> image(byteCount);
    glReadPixels(0, 0, testImageSide, testImageSide, GL_RGBA, GL_UNSIGNED_BYTE, image.data());
    if (GLRenderer::renderer && GLRenderer::renderer->diagnosticImageSink)
        GLRenderer::renderer->diagnosticImageSink(image);
    return image;
}

bool Diagnostic::isTestImageOK(std::vector<unsigned char> const& image)
{
    if (image.size() != byteCount)
        return false;
    int white = 0;
    for (std::size_t i = 0; i < byteCount; i += bytesPerPixel)
        white += isWhite(&image[i]) ? 1 : 0;
    int const nonWhite = static_cast<int>(pixelCount) - white;
    static LogChannel const channel("opengl");
    channel.write("Checking test image: white = ", stringize(white), ", nonWhite = ", stringize(nonWhite));
    return white > onePercent && nonWhite > onePercent;
}

bool Diagnostic::areTestImagesSame(std::vector<unsigned char> const& a, std::vector<unsigned char> const& b)
{
    if (a.size() != b.size() || a.size() != byteCount)
        return false;
    int mismatches = 0;
    for (std::size_t i = 0; i < byteCount; i += bytesPerPixel)
        mismatches += diffSq4(&a[i], &b[i]) >= smallestMismatch ? 1 : 0;
    double const share = mismatches * (1.0 / pixelCount);
    static LogChannel const channel("opengl");
    channel.write("Compared images.  Mismatch = ", stringize(share));
    return share < toleratedShare;
}

int Diagnostic::diffSq4(unsigned char const* a, unsigned char const* b)
{
    int sum = 0;
    for (std::size_t i = 0; i < bytesPerPixel; ++i) {
        int const difference = int{a[i]} - int{b[i]};
        sum += difference * difference;
    }
    return sum;
}
