#include "OpenGLRenderer/Strategist.h"

#include "OpenGLRenderer/AppearanceSetter.h"
#include "OpenGLRenderer/CameraLightsTransformVisitor.h"
#include "OpenGLRenderer/ConverterToFloats.h"
#include "OpenGLRenderer/GeneralSetupVisitor.h"
#include "OpenGLRenderer/GeometryVisitor.h"
#include "OpenGLRenderer/ManualAnimator.h"
#include "OpenGLRenderer/ManualColorizer.h"
#include "OpenGLRenderer/ManualTriangleFlipper.h"
#include "OpenGLRenderer/SharedTextureTraverser.h"
#include "SceneGraph/SGCombinationVisitor.h"
#include "SceneGraph/SGTraverser.h"

#include <gmock/gmock.h>

#include <type_traits>
#include <typeindex>

namespace {

using Types = std::vector<std::type_index>;

template <typename... Passes>
Types typesOf()
{
    return {std::type_index(typeid(Passes))...};
}

std::type_index typeOf(SGNodeVisitor const& visitor)
{
    return typeid(visitor);
}

SGNodeVisitor& heldByTraverser(SGNodeVisitor& visitor)
{
    return *dynamic_cast<SGTraverser&>(visitor).getVisitor();
}

} // namespace

static_assert(sizeof(Capabilities) == 3, "three flags and nothing else");
static_assert(std::is_trivially_copyable_v<Capabilities>);
static_assert(Capabilities() == Capabilities{false, false, false});

TEST(Strategist, ListsThePlainPipelineInOrder)
{
    auto const strategy = Strategist::computeStrategy(Capabilities());
    Types passes;
    for (smart_ptr<SGNodeVisitor> const& entry : strategy) {
        auto const* const traverser = dynamic_cast<SGTraverser const*>(entry.get());
        passes.push_back(traverser ? typeOf(*traverser->getVisitor()) : typeOf(*entry));
    }
    EXPECT_EQ(passes, (typesOf<ManualColorizer, ManualTriangleFlipper, ManualAnimator, ConverterToFloats,
                               GeneralSetupVisitor, SharedTextureTraverser, SGCombinationVisitor,
                               ManualUnAnimator, ManualTriangleUnFlipper, ManualUnColorizer>()));
}

TEST(Strategist, ShowsSetUpAndTextureUploadTheRootAloneAndAllElseTheTree)
{
    auto const strategy = Strategist::computeStrategy(Capabilities());
    for (smart_ptr<SGNodeVisitor> const& entry : strategy) {
        bool const bare =
            typeOf(*entry) == typeid(GeneralSetupVisitor) || typeOf(*entry) == typeid(SharedTextureTraverser);
        EXPECT_EQ(typeOf(*entry) == typeid(SGTraverser), !bare) << typeOf(*entry).name();
    }
}

TEST(Strategist, DrawsInOneWalk)
{
    auto const strategy = Strategist::computeStrategy(Capabilities());
    auto const& combination = dynamic_cast<SGCombinationVisitor&>(heldByTraverser(*strategy.at(6)));
    Types passes;
    for (smart_ptr<SGNodeVisitor> const& pass : combination.getVisitors())
        passes.push_back(typeOf(*pass));
    EXPECT_EQ(passes, (typesOf<CameraLightsTransformVisitor, AppearanceSetter, GeometryVisitor>()));
}

TEST(Strategist, MakesNewVisitorsThatNobodyElseHolds)
{
    auto const first = Strategist::computeStrategy(Capabilities());
    auto const second = Strategist::computeStrategy(Capabilities());
    for (std::size_t i = 0; i < first.size(); ++i) {
        EXPECT_NE(first[i], second[i]);
        EXPECT_EQ(first[i]->referenceCount(), 1);
    }
}

TEST(Strategist, SkinsOnTheProcessorWhateverTheCardOffers)
{
    for (bool const vbo : {false, true})
        for (bool const program : {false, true})
            for (bool const shader : {false, true}) {
                auto const strategy = Strategist::computeStrategy({vbo, program, shader});
                ASSERT_EQ(strategy.size(), 10U);
                EXPECT_EQ(typeOf(heldByTraverser(*strategy[2])), typeid(ManualAnimator));
            }
}
