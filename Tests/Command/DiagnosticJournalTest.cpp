#include "Viewer/Diagnosis/DiagnosticJournal.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <system_error>

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using sgview::DiagnosticJournal;
using sgview::JournalEntry;

class DiagnosticJournalTest : public testing::Test {
protected:
    ~DiagnosticJournalTest() override { fs::remove_all(folder); }

    static fs::path makeFolder()
    {
        std::string name = (fs::temp_directory_path() / "journal-XXXXXX").string();
        return ::mkdtemp(name.data());
    }

    fs::path folder = makeFolder();
    DiagnosticJournal journal{folder / "new" / "OpenGLRenderer"};
};

TEST_F(DiagnosticJournalTest, ReadsWhatWasWritten)
{
    EXPECT_FALSE(journal.read());
    JournalEntry entry = sgview::makeEntry("a / b = \n / c", "timing");
    EXPECT_EQ(entry.process, std::to_string(::getpid()));
    EXPECT_EQ(entry.time.size(), std::string("2000-01-01 00:00:00").size());
    entry.end = "was ended by signal 11";
    journal.write(entry);
    std::optional<JournalEntry> const read = journal.read();
    ASSERT_TRUE(read);
    EXPECT_EQ(read->card, entry.card);
    EXPECT_EQ(read->step, "timing");
    EXPECT_EQ(read->process, entry.process);
    EXPECT_EQ(read->time, entry.time);
    EXPECT_EQ(read->end, entry.end);
    journal.remove();
    EXPECT_FALSE(journal.read());
    journal.remove();
}

TEST_F(DiagnosticJournalTest, NonsenseIsNoJournal)
{
    journal.write(sgview::makeEntry("card", "step"));
    for (char const* const text : {"", "card = a\n", "step = b\n", "\xff\xfe", "card"}) {
        std::ofstream(journal.file()) << text;
        EXPECT_FALSE(journal.read()) << text;
    }
    fs::remove(journal.file());
    fs::create_directory(journal.file());
    EXPECT_FALSE(journal.read());
    EXPECT_THROW(journal.write(sgview::makeEntry("card", "step")), std::system_error);
}

TEST_F(DiagnosticJournalTest, OneAtATime)
{
    EXPECT_FALSE(journal.isHeld());
    EXPECT_FALSE(fs::exists(folder / "new")) << "asking writes nothing";
    {
        auto const lock = journal.lock(0ms);
        EXPECT_TRUE(journal.isHeld());
        try {
            static_cast<void>(journal.lock(10ms));
            ADD_FAILURE() << "locked twice";
        } catch (std::system_error const& error) {
            EXPECT_EQ(error.code(), std::errc::operation_would_block);
        }
    }
    EXPECT_FALSE(journal.isHeld());
}

TEST_F(DiagnosticJournalTest, EndInWords)
{
    JournalEntry entry = sgview::makeEntry("card", "timing buffer objects");
    EXPECT_EQ(inWords(entry), "was cut off while timing buffer objects");
    entry.end = "ended early with status 3";
    EXPECT_EQ(inWords(entry), "ended early with status 3 while timing buffer objects");
}

} // namespace
