#pragma once

#include "Utilities/Prefs.h"
#include "Utilities/PrefsText.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// Preferences in the file "preferences" of a folder, in the form that PrefsText gives; a link under that
/// name is followed.
///
/// The file is read when the object is made and whenever an entry is set, then under a lock, so that several
/// processes lose none of each other's entries. What is no such file (missing, unreadable, longer than
/// 1 MiB, not regular) reads as empty. An entry that is set is on the disk when setString() returns; if it
/// was there already, nothing is written, and an empty text removes it. Where it cannot be written, the file
/// stays as it is, the "error" log channel has one line on it until writing succeeds again, and the entry
/// lasts as long as the object and goes out with the next one that can be written. A file that is there but
/// cannot be read is never written over.
///
/// All this holds of the entries of a batch together, when it is committed: whatever stops the program or the
/// machine, the file has all of them or none, and other processes see all of them or none.
class PrefsFile : public Prefs {
public:
    /// \param folder  made with mode 0700 when the first entry is written
    explicit PrefsFile(std::filesystem::path const& folder);

    /// The user's folder for this program's preferences: "OpenGLRenderer" in $XDG_CONFIG_HOME, or in
    /// $HOME/.config; none if the environment has neither, as an absolute path.
    [[nodiscard]] static std::optional<std::filesystem::path> usualFolder();

    [[nodiscard]] std::string getString(std::string const& key) const override;
    void setString(std::string const& key, std::string const& value) override;

protected:
    void beginBatch() override;
    void endBatch(bool committed) override;

private:
    void save();
    void savePending();
    void logFailure(std::string const& reason);

    std::filesystem::path path_;
    PrefsText::Entries stored_;
    PrefsText::Entries pending_;                    ///< set here, not on the disk yet; empty texts remove
    std::vector<PrefsText::Entries> pendingBefore_; ///< each batch that is open, the outermost first
    bool failureLogged_ = false;
};
