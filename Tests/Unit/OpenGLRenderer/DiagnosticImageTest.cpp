#include "OpenGLRenderer/DiagnosticImage.h"

#include "Tests/Unit/OpenGLRenderer/RendererTesting.h"
#include "Tests/Unit/OpenGLRenderer/TestPictures.h"

#include <numeric>

using namespace RendererTesting;

namespace {

class DiagnosticImage : public RendererTest {
protected:
    /// Whether pictures are the same of which so many pixels differ.
    static bool sameBut(std::size_t pixels, int difference, std::size_t channel = 1)
    {
        Picture const picture = restPicture();
        return Diagnostic::areTestImagesSame(picture, changed(picture, pixels, difference, channel));
    }

    LogCapture log;
};

std::string mismatchLine(std::string const& share)
{
    return "opengl: Compared images.  Mismatch = " + share + "\n";
}

std::string checkLine(std::string const& white, std::string const& nonWhite)
{
    return "opengl: Checking test image: white = " + white + ", nonWhite = " + nonWhite + "\n";
}

} // namespace

TEST_F(DiagnosticImage, IsTheDrawablesLowerLeftCorner)
{
    Picture numbered(pictureBytes);
    std::iota(numbered.begin(), numbered.end(), static_cast<unsigned char>(0));
    numbered.back() = 77;
    gl.setPixels(numbered);
    EXPECT_TRUE(Diagnostic::readTestImage() == numbered);
    EXPECT_EQ(gl.calls(), Calls{"glReadPixels(0, 0, 512, 512, GL_RGBA, GL_UNSIGNED_BYTE, array)"});
    EXPECT_EQ(log.text(), "");
}

TEST_F(DiagnosticImage, IsBlackWhereTheDriverWritesNothing)
{
    gl.setPixels({});
    EXPECT_TRUE(Diagnostic::readTestImage() == Picture(pictureBytes));
}

TEST_F(DiagnosticImage, IsShownToTheHost)
{
    std::vector<Picture> shown;
    GLRenderer::renderer->diagnosticImageSink = [&](std::span<unsigned char const> picture) {
        shown.emplace_back(picture.begin(), picture.end());
    };
    gl.setPixels(bentPicture());
    EXPECT_TRUE(Diagnostic::readTestImage() == bentPicture());
    gl.setPixels(restPicture());
    EXPECT_TRUE(Diagnostic::readTestImage() == restPicture());
    ASSERT_EQ(shown.size(), 2U);
    EXPECT_TRUE(shown[0] == bentPicture());
    EXPECT_TRUE(shown[1] == restPicture());
}

TEST_F(DiagnosticImage, IsPlausibleWithMoreThanOnePercentOfBothKinds)
{
    EXPECT_FALSE(Diagnostic::isTestImageOK(pictureWithWhite(2'621)));
    EXPECT_TRUE(Diagnostic::isTestImageOK(pictureWithWhite(2'622)));
    EXPECT_TRUE(Diagnostic::isTestImageOK(pictureWithWhite(picturePixels - 2'622)));
    EXPECT_FALSE(Diagnostic::isTestImageOK(pictureWithWhite(picturePixels - 2'621)));
    EXPECT_EQ(log.text(), checkLine("2621", "259523") + checkLine("2622", "259522") +
                              checkLine("259522", "2622") + checkLine("259523", "2621"));
}

TEST_F(DiagnosticImage, IsNotPlausibleInOneColour)
{
    EXPECT_FALSE(Diagnostic::isTestImageOK(Picture(pictureBytes, 0)));
    EXPECT_FALSE(Diagnostic::isTestImageOK(Picture(pictureBytes, 255)));
    EXPECT_EQ(log.text(), checkLine("0", "262144") + checkLine("262144", "0"));
}

TEST_F(DiagnosticImage, IsWhiteByItsColoursWhateverItsAlpha)
{
    Picture picture = restPicture();
    for (std::size_t alpha = 3; alpha < pictureBytes; alpha += 4)
        picture[alpha] = 0;
    EXPECT_TRUE(Diagnostic::isTestImageOK(picture));
    for (std::size_t channel = 0; channel < 3; ++channel)
        EXPECT_FALSE(Diagnostic::isTestImageOK(changed(restPicture(), picturePixels, 1, channel))) << channel;
    EXPECT_EQ(log.text(), checkLine("131072", "131072") + checkLine("0", "262144") +
                              checkLine("0", "262144") + checkLine("0", "262144"));
}

TEST_F(DiagnosticImage, OfAnotherSizeIsNotPlausible)
{
    Picture larger = restPicture();
    larger.push_back(0);
    Picture smaller = restPicture();
    smaller.pop_back();
    for (Picture const& picture : {larger, smaller, Picture()})
        EXPECT_FALSE(Diagnostic::isTestImageOK(picture)) << picture.size();
    EXPECT_EQ(log.text(), "");
}

TEST_F(DiagnosticImage, DistanceIsThatOfFourBytes)
{
    unsigned char const black[]{0, 0, 0, 0};
    unsigned char const white[]{255, 255, 255, 255};
    unsigned char const mixed[]{1, 20, 3, 200};
    EXPECT_EQ(Diagnostic::diffSq4(black, white), 260'100);
    EXPECT_EQ(Diagnostic::diffSq4(white, black), 260'100);
    EXPECT_EQ(Diagnostic::diffSq4(mixed, mixed), 0);
    EXPECT_EQ(Diagnostic::diffSq4(black, mixed), 1 + 400 + 9 + 40'000);
    EXPECT_EQ(Diagnostic::diffSq4(mixed, white), 254 * 254 + 235 * 235 + 252 * 252 + 55 * 55);
}

TEST_F(DiagnosticImage, ToleratesADistanceOfAHundred)
{
    for (std::size_t channel = 0; channel < 4; ++channel) {
        EXPECT_TRUE(sameBut(picturePixels, 10, channel)) << channel;
        EXPECT_FALSE(sameBut(picturePixels, 11, channel)) << channel;
    }
    EXPECT_EQ(log.text(), mismatchLine("0") + mismatchLine("1") + mismatchLine("0") + mismatchLine("1") +
                              mismatchLine("0") + mismatchLine("1") + mismatchLine("0") + mismatchLine("1"));
}

TEST_F(DiagnosticImage, DoesNotTolerateADistanceOfAHundredAndOne)
{
    EXPECT_FALSE(Diagnostic::areTestImagesSame(
        restPicture(), changed(changed(restPicture(), picturePixels, 10), picturePixels, 1, 0)));
    EXPECT_EQ(log.text(), mismatchLine("1"));
}

TEST_F(DiagnosticImage, IsTheSameWithLessThanOnePercentOfMismatches)
{
    EXPECT_TRUE(sameBut(0, 0));
    EXPECT_TRUE(sameBut(1, 100));
    EXPECT_TRUE(sameBut(2'621, 11));
    EXPECT_FALSE(sameBut(2'622, 11));
    EXPECT_EQ(log.text(), mismatchLine("0") + mismatchLine("3.8147e-06") + mismatchLine("0.00999832") +
                              mismatchLine("0.0100021"));
}

TEST_F(DiagnosticImage, IsComparedToItsLastPixel)
{
    Picture other = restPicture();
    for (std::size_t pixel = picturePixels - 3; pixel < picturePixels; ++pixel)
        other[4 * pixel + 2] = 255;
    EXPECT_TRUE(Diagnostic::areTestImagesSame(restPicture(), other));
    EXPECT_EQ(log.text(), mismatchLine("1.14441e-05"));
}

TEST_F(DiagnosticImage, ComparesTheSameEitherWay)
{
    EXPECT_FALSE(Diagnostic::areTestImagesSame(restPicture(), bentPicture()));
    EXPECT_FALSE(Diagnostic::areTestImagesSame(bentPicture(), restPicture()));
    EXPECT_EQ(log.text(), mismatchLine("0.5") + mismatchLine("0.5"));
}

TEST_F(DiagnosticImage, OfAnotherSizeIsNeverTheSame)
{
    Picture const picture = restPicture();
    Picture const smaller(picture.begin(), picture.end() - 4);
    EXPECT_FALSE(Diagnostic::areTestImagesSame(picture, smaller));
    EXPECT_FALSE(Diagnostic::areTestImagesSame(smaller, picture));
    EXPECT_FALSE(Diagnostic::areTestImagesSame(smaller, smaller));
    EXPECT_FALSE(Diagnostic::areTestImagesSame({}, {}));
    EXPECT_FALSE(Diagnostic::areTestImagesSame({}, picture));
    EXPECT_EQ(log.text(), "");
}
