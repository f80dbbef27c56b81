#include "OpenGLRenderer/PassName.h"

#include "SceneGraph/SGCombinationVisitor.h"
#include "SceneGraph/SGTraverser.h"

#include <boost/core/demangle.hpp>

#include <typeinfo>

std::string passName(SGNodeVisitor const& pass)
{
    if (auto const* const traverser = dynamic_cast<SGTraverser const*>(&pass))
        return passName(*traverser->getVisitor());
    if (auto const* const combination = dynamic_cast<SGCombinationVisitor const*>(&pass)) {
        std::string names;
        for (smart_ptr<SGNodeVisitor> const& visitor : combination->getVisitors())
            names += (names.empty() ? "" : " + ") + passName(*visitor);
        return names;
    }
    std::string const name = boost::core::demangle(typeid(pass).name());
    return name.substr(name.rfind(':') + 1);
}
