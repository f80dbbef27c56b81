#pragma once

#include "SceneGraph/SGExtraData.h"

/// A record that keeps what a pass has taken from a node for the length of a frame, until another pass puts
/// it back.
///
/// \tparam Record  the class that derives from this; knows how many of its kind there are
template <typename Record>
class ParkedData : public SGExtraData {
public:
    ParkedData() { setParked(true); }
    ParkedData(ParkedData const&) = delete;
    ParkedData& operator=(ParkedData const&) = delete;
    ~ParkedData() override { setParked(false); }

    /// For a record that outlives what it keeps: whether it keeps anything. A new one does.
    void setParked(bool parked)
    {
        count_ += static_cast<int>(parked) - static_cast<int>(parked_);
        parked_ = parked;
    }

    /// Whether anything of this kind waits to be put back, on whatever node.
    [[nodiscard]] static bool any() { return count_ > 0; }

private:
    static inline int count_ = 0;

    bool parked_ = false;
};
