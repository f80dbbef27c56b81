#include "OpenGLRenderer/AssetText.h"

#include "OpenGLRenderer/VertexProgramVisitor.h"
#include "OpenGLRenderer/VertexShaderVisitor.h"
#include "Tests/Unit/OpenGLRenderer/AssetFolder.h"
#include "Tests/Unit/OpenGLRenderer/RendererTesting.h"

using namespace RendererTesting;

namespace {

std::string const asset = "Shaders/made-up.txt";

std::string textOfSize(std::size_t size)
{
    std::string text;
    for (std::size_t i = 0; i < size; ++i)
        text += static_cast<char>('a' + i % 26);
    return text;
}

} // namespace

TEST(AssetText, IsTheWholeTextWhateverItsLength)
{
    AssetFolder const folder;
    for (std::size_t const size : {0U, 1U, 1023U, 1024U, 1025U, 2048U, 5000U}) {
        folder.write(asset, textOfSize(size));
        EXPECT_EQ(loadAssetText(asset), textOfSize(size)) << size;
    }
}

TEST(AssetText, IsReadByteByByte)
{
    AssetFolder const folder;
    std::string const bytes("line\r\n\n\0\x1a\xff", 10);
    folder.write(asset, bytes);
    EXPECT_EQ(loadAssetText(asset), bytes);
}

TEST(AssetText, IsEmptyWhereThereIsNoAssetAndLogsThePlacesTried)
{
    AssetFolder const folder;
    LogCapture const log;
    EXPECT_EQ(loadAssetText("Shaders/nowhere.txt"), "");
    EXPECT_THAT(log.text(), testing::StartsWith("error: Asset \"Shaders/nowhere.txt\" not found; tried: /"));
    EXPECT_THAT(log.text(), testing::EndsWith("/Shaders/nowhere.txt\n"));
    std::string const line = log.text();
    EXPECT_EQ(std::count(line.begin(), line.end(), '\n'), 1);
}

TEST(AssetText, IsWhatBothPassesLoad)
{
    AssetFolder const folder;
    folder.write(asset, "text");
    EXPECT_EQ(VertexProgramVisitor::loadProgram(asset), "text");
    EXPECT_EQ(VertexShaderVisitor::loadShader(asset), "text");
}
