#include "Utilities/Prefs.h"

#include "Utilities/MemoryPrefs.h"
#include "Utilities/PrefsFile.h"

template class RogueSingleton<Prefs, PrefsFactory>;

namespace {

// A host may name its maker before this file's own statics are made.
PrefsFactory::Maker& maker()
{
    static PrefsFactory::Maker theMaker;
    return theMaker;
}

smart_ptr<Prefs> newUsualPrefs()
{
    if (auto const folder = PrefsFile::usualFolder())
        return make_smart<PrefsFile>(*folder);
    return make_smart<MemoryPrefs>();
}

} // namespace

smart_ptr<Prefs> PrefsFactory::newInstance()
{
    return maker() ? maker()() : newUsualPrefs();
}

void PrefsFactory::setMaker(Maker newMaker)
{
    maker() = std::move(newMaker);
}
