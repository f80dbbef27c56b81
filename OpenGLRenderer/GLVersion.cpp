#include "OpenGLRenderer/GLVersion.h"

#include "OpenGLRenderer/GLString.h"
#include "Utilities/Strings.h"

#include <boost/lexical_cast.hpp>

#include <cstdlib>

namespace {

constexpr int unread = -2;
int cachedMajor = unread;
int cachedMinor = unread;

bool readVersion()
{
    std::vector<std::string> const pieces = string_split(getGLString(GL_VERSION), '.');
    if (pieces.size() < 2)
        return false;
    cachedMajor = boost::lexical_cast<int>(pieces[0]);
    cachedMinor = std::atoi(pieces[1].c_str());
    return true;
}

} // namespace

bool checkGLVersion(int major, int minor)
{
    if (cachedMajor < 0 && !readVersion())
        return false;
    return cachedMajor > major || cachedMinor >= minor;
}
