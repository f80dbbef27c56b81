#include "Utilities/Material.h"

#include "Utilities/InTag.h"
#include "Utilities/OutTag.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <locale>
#include <random>
#include <vector>

namespace {

std::string textOf(Material const& material)
{
    OutTag out;
    material.save(out, "material");
    return out.getDocument();
}

void load(Material& material, std::string_view text)
{
    InTag tag = InTag::parse(text);
    material.load(tag, "material");
}

std::vector<float*> floatsOf(Material& m)
{
    std::vector<float*> all{&m.shininess, &m.texscale, &m.texangle};
    for (Color* const color : {&m.ambient, &m.diffuse, &m.specular, &m.emissive})
        for (float* const component : {&color->r, &color->g, &color->b, &color->a})
            all.push_back(component);
    return all;
}

Material elaborate()
{
    Material material;
    float next = 0.0F;
    for (float* const value : floatsOf(material))
        *value = (next += 1.0F) / 3.0F;
    material.ambdiff = true;
    material.texname = " <bark & \"moss\">\n\xc3\xa9 ";
    return material;
}

class CommaPunctuation : public std::numpunct<char> {
protected:
    char do_decimal_point() const override { return ','; }
};

/// Loading either gives a material or throws TagError and changes nothing; true where it gave one.
bool survives(std::vector<char> const& document)
{
    Material const before = elaborate();
    Material material = before;
    try {
        load(material, std::string_view(document.data(), document.size()));
        return true;
    } catch (TagError const&) {
        EXPECT_EQ(material, before);
        return false;
    }
}

} // namespace

TEST(Material, StartsAsOpenGLsDefault)
{
    Material const material;
    EXPECT_EQ(material.ambient, (Color{0.2F, 0.2F, 0.2F, 1.0F}));
    EXPECT_EQ(material.diffuse, (Color{0.8F, 0.8F, 0.8F, 1.0F}));
    EXPECT_EQ(material.specular, (Color{0.0F, 0.0F, 0.0F, 1.0F}));
    EXPECT_EQ(material.emissive, (Color{0.0F, 0.0F, 0.0F, 1.0F}));
    EXPECT_EQ(material.shininess, 0.0F);
    EXPECT_FALSE(material.ambdiff);
}

TEST(Material, SetAmbientAndDiffuseMakesThemOne)
{
    Material material;
    Color const color{0.1F, 0.2F, 0.3F, 0.4F};
    material.setAmbientAndDiffuse(color);
    EXPECT_EQ(material.ambient, color);
    EXPECT_EQ(material.diffuse, color);
    EXPECT_TRUE(material.ambdiff);
}

TEST(Material, EqualityLooksAtEveryField)
{
    Material const reference = elaborate();
    EXPECT_EQ(reference, elaborate());
    Material changed = reference;
    for (float* const value : floatsOf(changed)) {
        float const before = std::exchange(*value, 99.0F);
        EXPECT_FALSE(changed == reference);
        *value = before;
    }
    EXPECT_EQ(changed, reference);
    changed.ambdiff = false;
    EXPECT_FALSE(changed == reference);
    changed = reference;
    changed.texname += 'x';
    EXPECT_FALSE(changed == reference);
}

TEST(Material, TextHasAnElementForEachFieldInDeclarationOrder)
{
    Material material;
    material.diffuse = {1.0F / 3.0F, 0.5F, -0.0F, 1.0F};
    material.shininess = 12.5F;
    material.ambdiff = true;
    material.texname = "bark & moss";
    material.texangle = 1e-40F;
    EXPECT_EQ(textOf(material), "<material>\n"
                                "  <ambient r=\"0.2\" g=\"0.2\" b=\"0.2\" a=\"1\" />\n"
                                "  <diffuse r=\"0.333333343\" g=\"0.5\" b=\"-0\" a=\"1\" />\n"
                                "  <specular r=\"0\" g=\"0\" b=\"0\" a=\"1\" />\n"
                                "  <emissive r=\"0\" g=\"0\" b=\"0\" a=\"1\" />\n"
                                "  <shininess>12.5</shininess>\n"
                                "  <ambdiff>1</ambdiff>\n"
                                "  <texname>bark &amp; moss</texname>\n"
                                "  <texscale>1</texscale>\n"
                                "  <texangle>9.99995e-41</texangle>\n"
                                "</material>\n");
}

TEST(Material, RoundTripsThroughTextWithoutLosingABit)
{
    std::mt19937 random(20240607);
    int patterns = 0;
    while (patterns < 100000) {
        Material saved;
        for (float* const value : floatsOf(saved)) {
            do
                *value = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
            while (!std::isfinite(*value));
            ++patterns;
        }
        Material loaded;
        load(loaded, textOf(saved));
        auto const expected = floatsOf(saved);
        auto const actual = floatsOf(loaded);
        for (std::size_t i = 0; i < expected.size(); ++i)
            ASSERT_EQ(std::bit_cast<std::uint32_t>(*actual[i]), std::bit_cast<std::uint32_t>(*expected[i]))
                << *expected[i];
    }
}

TEST(Material, RoundTripsItsStringAndFlag)
{
    Material loaded;
    load(loaded, textOf(elaborate()));
    EXPECT_EQ(loaded, elaborate());
    load(loaded, textOf(Material()));
    EXPECT_EQ(loaded, Material()) << "an empty name is a value too";
}

TEST(Material, TextDoesNotFollowTheProgramsLocale)
{
    std::string const text = textOf(elaborate());
    std::locale const before = std::locale::global(std::locale(std::locale::classic(), new CommaPunctuation));
    EXPECT_EQ(textOf(elaborate()), text);
    Material loaded;
    load(loaded, text);
    EXPECT_EQ(loaded, elaborate());
    std::locale::global(before);
}

TEST(Material, RefusesToWriteWhatIsNotFinite)
{
    for (float const bad : {std::numeric_limits<float>::infinity(), -std::numeric_limits<float>::infinity(),
                            std::numeric_limits<float>::quiet_NaN()}) {
        Material material;
        for (float* const value : floatsOf(material)) {
            float const before = std::exchange(*value, bad);
            OutTag out;
            EXPECT_THROW(material.save(out, "material"), TagError);
            EXPECT_EQ(out.getDocument(), "");
            *value = before;
        }
    }
}

TEST(Material, MalformedTextNamesTheElementAndChangesNothing)
{
    std::string const whole = textOf(Material());
    auto const with = [&](std::string const& part, std::string const& replacement) {
        std::string text = whole;
        return text.replace(text.find(part), part.size(), replacement);
    };
    struct Case {
        std::string text;
        std::string message;
    };
    for (Case const& bad :
         {Case{"<other/>", "material: no such element"},
          Case{whole + whole, "material: more than one such element"},
          Case{with(" g=\"0.2\"", ""), "material/ambient: no attribute \"g\""},
          Case{with("r=\"0.2\"", "r=\"x\""), "material/ambient/r: \"x\" cannot be read as such a value"},
          Case{with("<ambdiff>0", "<ambdiff>2"), "material/ambdiff: \"2\" cannot be read as such a value"},
          Case{with("<texscale>1", "<texscale>1 2"), "material/texscale: \"1 2\" goes on after the value"},
          Case{with("<texangle>0</texangle>", ""), "material/texangle: no such element"},
          Case{with("<texname />", "<texname /><texname />"),
               "material/texname: more than one such element"}}) {
        SCOPED_TRACE(bad.text);
        Material material = elaborate();
        try {
            load(material, bad.text);
            ADD_FAILURE() << "nothing was thrown";
        } catch (TagError const& error) {
            EXPECT_EQ(error.what(), bad.message);
        }
        EXPECT_EQ(material, elaborate());
    }
}

TEST(Material, SurvivesEveryTruncationOfItsText)
{
    std::string const whole = textOf(elaborate());
    for (std::size_t size = 0; size < whole.size(); ++size) {
        SCOPED_TRACE(size);
        bool const loaded = survives(std::vector<char>(whole.data(), whole.data() + size));
        EXPECT_EQ(loaded, size == whole.size() - 1) << "all but the last line end is needed";
    }
}

TEST(Material, SurvivesEveryByteOfItsTextBeingChanged)
{
    std::string const whole = textOf(elaborate());
    std::mt19937 random(3);
    for (std::size_t i = 0; i < whole.size(); ++i)
        for (int repeat = 0; repeat < 4; ++repeat) {
            SCOPED_TRACE(i);
            std::vector<char> document(whole.begin(), whole.end());
            document[i] = static_cast<char>(document[i] ^ (1 + random() % 255));
            survives(document);
        }
}
