#include "Viewer/Bench/AllocationCount.h"

#include "SceneGraph/SGTransformNode.h"

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <thread>
#include <vector>

namespace {

using sgview::allocationCount;

/// How many allocations an action takes.
template <typename Action>
std::int64_t allocationsIn(Action const& action)
{
    std::int64_t const before = allocationCount();
    action();
    return allocationCount() - before;
}

void* volatile seen = nullptr; // keeps the compiler from leaving allocations out

TEST(AllocationCount, CountsEveryFormOfNewOnce)
{
    struct alignas(256) Wide {
        char bytes[256];
    };
    EXPECT_EQ(allocationsIn([] {
                  auto const one = std::make_unique<int>(1);
                  seen = one.get();
              }),
              1);
    EXPECT_EQ(allocationsIn([] {
                  auto const aligned = std::make_unique<Wide>();
                  seen = aligned.get();
                  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(seen) % 256, 0U);
              }),
              1);
    EXPECT_EQ(allocationsIn([] {
                  seen = ::operator new(10, std::nothrow);
                  ::operator delete(seen);
              }),
              1);
    EXPECT_EQ(allocationsIn([] {
                  seen = ::operator new(10, std::align_val_t(64), std::nothrow);
                  ::operator delete(seen, std::align_val_t(64));
              }),
              1);
    EXPECT_EQ(allocationsIn([] {
                  seen = ::operator new(0);
                  ::operator delete(seen);
              }),
              1);
}

TEST(AllocationCount, CountsAKnownNumber)
{
    EXPECT_EQ(allocationsIn([] {
                  std::vector<std::unique_ptr<int>> many;
                  many.reserve(1000);
                  for (int i = 0; i < 1000; ++i)
                      many.push_back(std::make_unique<int>(i));
                  seen = many.data();
              }),
              1001);
    EXPECT_EQ(allocationsIn([] { seen = nullptr; }), 0);
}

TEST(AllocationCount, CountsWhatLibrariesAskFor)
{
    std::int64_t const one = allocationsIn([] { auto const node = make_smart<SGTransformNode>(nullptr); });
    EXPECT_GE(one, 1) << "the node itself";
    EXPECT_EQ(allocationsIn([] {
                  for (int i = 0; i < 10; ++i)
                      auto const node = make_smart<SGTransformNode>(nullptr);
              }),
              10 * one);
}

TEST(AllocationCount, IsOneOfAThread)
{
    std::int64_t inThread = 0;
    std::int64_t const before = allocationCount();
    std::thread thread([&inThread] {
        inThread = allocationsIn([] {
            for (int i = 0; i < 500; ++i) {
                auto const one = std::make_unique<int>(i);
                seen = one.get();
            }
        });
    });
    thread.join();
    EXPECT_EQ(inThread, 500);
    EXPECT_LT(allocationCount() - before, 50) << "what starting a thread takes, and no more";
}

TEST(AllocationCount, ImpossibleSizesAreRefused)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer ends a process that asks for so much";
#endif
    std::size_t volatile const impossible = static_cast<std::size_t>(-1) / 2; // beyond what compilers see
    std::size_t volatile const almostAll = static_cast<std::size_t>(-8);
    EXPECT_EQ(::operator new(impossible, std::nothrow), nullptr);
    EXPECT_EQ(::operator new(almostAll, std::align_val_t(64), std::nothrow), nullptr);
    EXPECT_THROW(seen = ::operator new(impossible), std::bad_alloc);
    EXPECT_THROW(seen = ::operator new(almostAll, std::align_val_t(64)), std::bad_alloc);
}

} // namespace
