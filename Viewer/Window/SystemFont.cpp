#include "Viewer/Window/SystemFont.h"

#include <fontconfig/fontconfig.h>

#include <memory>

namespace sgview {

namespace {

struct PatternEnd {
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
};
using Pattern = std::unique_ptr<FcPattern, PatternEnd>;

FcChar8 const* asFontconfig(char const* text)
{
    return reinterpret_cast<FcChar8 const*>(text);
}

} // namespace

std::filesystem::path systemFont()
{
    Pattern const wanted(FcNameParse(asFontconfig("sans-serif:scalable=true:fontformat=TrueType")));
    if (!wanted || !FcConfigSubstitute(nullptr, wanted.get(), FcMatchPattern))
        return {};
    FcDefaultSubstitute(wanted.get());
    FcResult result = FcResultNoMatch;
    Pattern const match(FcFontMatch(nullptr, wanted.get(), &result));
    FcChar8* file = nullptr;
    if (!match || FcPatternGetString(match.get(), FC_FILE, 0, &file) != FcResultMatch)
        return {};
    return reinterpret_cast<char const*>(file);
}

} // namespace sgview
