#pragma once

#include "Viewer/Import/FileAccess.h"

#include <assimp/IOSystem.hpp>

#include <string>
#include <string_view>

namespace sgview {

/// All that Assimp sees of the file system: the model file, whose bytes are here already, under the name
/// `mainName`, and what `FileAccess` grants. A file that the model names and that is missing is a named
/// warning. Nothing can be written.
class AssimpFiles : public Assimp::IOSystem {
public:
    /// The arguments must outlive this.
    AssimpFiles(std::string mainName, Bytes const& mainFile, FileAccess& access, Warnings& warnings)
        : mainName_(std::move(mainName)), mainFile_(mainFile), access_(access), warnings_(warnings)
    {
    }

    bool Exists(char const* name) const override;
    char getOsSeparator() const override { return '/'; }
    Assimp::IOStream* Open(char const* name, char const* mode) override;
    void Close(Assimp::IOStream* stream) override;
    bool CreateDirectory(std::string const&) override { return false; }
    bool ChangeDirectory(std::string const&) override { return false; }
    bool DeleteFile(std::string const&) override { return false; }

private:
    void noteMissing(std::string_view name);

    std::string mainName_;
    Bytes const& mainFile_;
    FileAccess& access_;
    Warnings& warnings_;
};

} // namespace sgview
