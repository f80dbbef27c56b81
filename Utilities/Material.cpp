#include "Utilities/Material.h"

#include "Utilities/CompositeField.h"
#include "Utilities/MemberField.h"

#include <tuple>

namespace {

auto fieldsOf(Material const& m)
{
    return std::tie(m.ambient, m.diffuse, m.specular, m.emissive, m.shininess, m.ambdiff, m.texname,
                    m.texscale, m.texangle);
}

} // namespace

void Material::setAmbientAndDiffuse(Color const& color)
{
    ambient = color;
    diffuse = color;
    ambdiff = true;
}

smart_ptr<Field> Material::makeField(std::string const& name) const
{
    std::vector<smart_ptr<Field>> fields{
        newMemberField<Material, Color>("ambient", &Material::ambient),
        newMemberField<Material, Color>("diffuse", &Material::diffuse),
        newMemberField<Material, Color>("specular", &Material::specular),
        newMemberField<Material, Color>("emissive", &Material::emissive),
        newMemberField<Material, float>("shininess", &Material::shininess),
        newMemberField<Material, bool>("ambdiff", &Material::ambdiff),
        newMemberField<Material, std::string>("texname", &Material::texname),
        newMemberField<Material, float>("texscale", &Material::texscale),
        newMemberField<Material, float>("texangle", &Material::texangle),
    };
    return make_smart<CompositeField>(name, make_smart<ClassDesc>(std::move(fields)));
}

bool Material::operator==(Material const& other) const
{
    return fieldsOf(*this) == fieldsOf(other);
}
