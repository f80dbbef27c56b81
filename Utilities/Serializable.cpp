#include "Utilities/Serializable.h"

#include "Utilities/Field.h"

void Serializable::save(OutTag& tag, std::string const& name) const
{
    makeField(name)->save(tag, *this);
}

void Serializable::load(InTag& tag, std::string const& name)
{
    Field::Assignment const assign = makeField(name)->load(tag);
    assign(*this);
}
