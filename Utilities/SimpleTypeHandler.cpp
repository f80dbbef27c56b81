#include "Utilities/SimpleTypeHandler.h"

void SimpleTypeHandler<std::string>::save(OutTag& parent, std::string const& name, std::string const& value)
{
    parent.writeTag(name, [&] { parent << value; });
}

std::string SimpleTypeHandler<std::string>::load(InTag const& parent, std::string const& name)
{
    return parent.getChild(name).getText();
}

void SimpleTypeHandler<Color>::save(OutTag& parent, std::string const& name, Color const& value)
{
    Tag tag(name);
    for (std::size_t i = 0; i < _attrs.size(); ++i)
        OutTag_setAttr<float>(tag, _attrs[i], value.data()[i]);
    parent.writeSingleTag(tag);
}

Color SimpleTypeHandler<Color>::load(InTag const& parent, std::string const& name)
{
    InTag const tag = parent.getChild(name);
    Color color;
    color.r = InTag_readAttr<float>(tag, _attrs[0]);
    color.g = InTag_readAttr<float>(tag, _attrs[1]);
    color.b = InTag_readAttr<float>(tag, _attrs[2]);
    color.a = InTag_readAttr<float>(tag, _attrs[3]);
    return color;
}
