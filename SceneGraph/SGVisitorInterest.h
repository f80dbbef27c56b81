#pragma once

#include "SceneGraph/SGNodeKind.h"

#include <cstdint>
#include <type_traits>
#include <typeinfo>

class SGNode;
class SGNodeVisitor;
class SGRootNode;
class SGOrderedGroupNode;
class SGCameraNode;
class SGLightsNode;
class SGTransformNode;
class SGZTransformNode;
class SGGeometryNode;
class SGQuadNode;
class SGGeometryReferenceNode;
class SGSurfaceGeometryReferenceNode;
class SGCurveGeometryReferenceNode;

/// The kinds of nodes for which a visitor's operations do anything. A walk leaves the others out.
class SGVisitorInterest {
public:
    constexpr SGVisitorInterest() = default;

    [[nodiscard]] static constexpr SGVisitorInterest everything() { return {all, all}; }

    [[nodiscard]] constexpr bool enters(SGNodeKind kind) const { return has(entered_, kind); }
    [[nodiscard]] constexpr bool leaves(SGNodeKind kind) const { return has(left_, kind); }

    constexpr void addEnter(SGNodeKind kind) { entered_ |= bit(kind); }
    constexpr void addLeave(SGNodeKind kind) { left_ |= bit(kind); }

    constexpr SGVisitorInterest& operator|=(SGVisitorInterest const& other)
    {
        entered_ |= other.entered_;
        left_ |= other.left_;
        return *this;
    }

    constexpr bool operator==(SGVisitorInterest const&) const = default;

private:
    static constexpr std::uint32_t all = (1U << nodeKindCount) - 1U;

    constexpr SGVisitorInterest(std::uint32_t entered, std::uint32_t left) : entered_(entered), left_(left) {}

    /// This way round it is one instruction that tests a bit.
    static constexpr bool has(std::uint32_t kinds, SGNodeKind kind)
    {
        return (kinds >> static_cast<unsigned>(kind) & 1U) != 0;
    }

    static constexpr std::uint32_t bit(SGNodeKind kind) { return 1U << static_cast<unsigned>(kind); }

    std::uint32_t entered_ = 0;
    std::uint32_t left_ = 0;
};

/// Reads off a visitor's class which operations it overrides.
namespace VisitorInterest {

template <typename Node, typename Owner>
Owner* ownerOf(void (Owner::*)(Node*));

/// Whether `enter` for the first of these kinds is overridden, or any that it forwards to, which follow.
template <typename Visitor, typename... Chain>
constexpr bool entersAny()
{
    return (!std::is_same_v<decltype(ownerOf<Chain>(&Visitor::enter)), SGNodeVisitor*> || ...);
}

template <typename Visitor, typename... Chain>
constexpr bool leavesAny()
{
    return (!std::is_same_v<decltype(ownerOf<Chain>(&Visitor::leave)), SGNodeVisitor*> || ...);
}

template <typename Visitor, typename... Chain>
constexpr void add(SGVisitorInterest& interest, SGNodeKind kind)
{
    if (entersAny<Visitor, Chain..., SGNode>())
        interest.addEnter(kind);
    if (leavesAny<Visitor, Chain..., SGNode>())
        interest.addLeave(kind);
}

template <typename Visitor>
constexpr SGVisitorInterest ofClass()
{
    SGVisitorInterest interest;
    add<Visitor>(interest, SGNodeKind::other);
    add<Visitor, SGRootNode>(interest, SGNodeKind::root);
    add<Visitor, SGOrderedGroupNode>(interest, SGNodeKind::orderedGroup);
    add<Visitor, SGCameraNode>(interest, SGNodeKind::camera);
    add<Visitor, SGLightsNode>(interest, SGNodeKind::lights);
    add<Visitor, SGTransformNode>(interest, SGNodeKind::transform);
    add<Visitor, SGZTransformNode>(interest, SGNodeKind::zTransform);
    add<Visitor, SGGeometryNode>(interest, SGNodeKind::geometry);
    add<Visitor, SGQuadNode, SGGeometryNode>(interest, SGNodeKind::quad);
    add<Visitor, SGGeometryReferenceNode, SGGeometryNode>(interest, SGNodeKind::geometryReference);
    add<Visitor, SGSurfaceGeometryReferenceNode, SGGeometryReferenceNode, SGGeometryNode>(
        interest, SGNodeKind::surface);
    add<Visitor, SGCurveGeometryReferenceNode, SGGeometryReferenceNode, SGGeometryNode>(interest,
                                                                                        SGNodeKind::curve);
    return interest;
}

/// The interest of a visitor of exactly this class; everything, where its class derives from that one.
template <typename Visitor>
SGVisitorInterest of(Visitor const& visitor)
{
    constexpr SGVisitorInterest interest = ofClass<Visitor>();
    return typeid(visitor) == typeid(Visitor) ? interest : SGVisitorInterest::everything();
}

} // namespace VisitorInterest
