#include "Utilities/MemberAccessor.h"

#include "Utilities/Material.h"

#include <gtest/gtest.h>

#include <typeinfo>

namespace {

class Foreign : public Serializable {
public:
    smart_ptr<Field> makeField(std::string const&) const override { return {}; }
};

} // namespace

TEST(MemberAccessor, ReachesAMemberThroughItsPointer)
{
    auto const accessor = newMemberAccessor<Material, std::string>(&Material::texname);
    Material material;
    accessor->set(material, "bark");
    EXPECT_EQ(material.texname, "bark");
    EXPECT_EQ(&accessor->get(material), &material.texname);
}

TEST(MemberAccessor, RefusesAnObjectOfAnotherClass)
{
    auto const accessor = newMemberAccessor<Material, float>(&Material::shininess);
    Foreign foreign;
    EXPECT_THROW(accessor->set(foreign, 1.0F), std::bad_cast);
    EXPECT_THROW(static_cast<void>(accessor->get(foreign)), std::bad_cast);
}
