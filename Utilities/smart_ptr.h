#pragma once

#include <boost/pointer_cast.hpp>

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <utility>

/// Root of every shared object: an intrusive reference count that starts at 0.
///
/// The count belongs to the object, not to its value: a copy starts at 0 again and assignment leaves it
/// alone. One thread at a time may share an object.
class smart_base {
public:
    smart_base() = default;
    smart_base(smart_base const&) noexcept {}
    smart_base& operator=(smart_base const&) noexcept { return *this; }
    virtual ~smart_base() = default;

    /// Adds a reference; returns the object.
    virtual smart_base* addRef();

    /// Drops a reference; the last one destroys the object.
    virtual void release();

    /// Deletes the object.
    virtual void destroy();

    [[nodiscard]] std::int32_t referenceCount() const { return count_; }

private:
    std::int32_t count_ = 0;
};

/// A shared owner of a T, which derives from smart_base.
template <typename T>
class smart_ptr {
public:
    using element_type = T;

    smart_ptr() = default;
    /*implicit*/ smart_ptr(std::nullptr_t) {}

    explicit smart_ptr(T* object)
        : base_(const_cast<smart_base*>(static_cast<smart_base const*>(object))), object_(object)
    {
        if (base_)
            base_->addRef();
    }

    smart_ptr(smart_ptr const& other) : base_(other.base_), object_(other.object_)
    {
        if (base_)
            base_->addRef();
    }

    smart_ptr(smart_ptr&& other) noexcept
        : base_(std::exchange(other.base_, nullptr)), object_(std::exchange(other.object_, nullptr))
    {
    }

    template <typename U>
    requires std::convertible_to<U*, T*>
    /*implicit*/ smart_ptr(smart_ptr<U> const& other) : base_(other.base_), object_(other.object_)
    {
        if (base_)
            base_->addRef();
    }

    template <typename U>
    requires std::convertible_to<U*, T*>
    /*implicit*/ smart_ptr(smart_ptr<U>&& other)
    noexcept : base_(std::exchange(other.base_, nullptr)), object_(std::exchange(other.object_, nullptr)) {}

    ~smart_ptr()
    {
        if (base_)
            base_->release();
    }

    /// Takes its argument by value, so that the new reference is held before the old one goes, whichever owns
    /// the other.
    smart_ptr& operator=(smart_ptr other) noexcept
    {
        swap(other);
        return *this;
    }

    void swap(smart_ptr& other) noexcept
    {
        std::swap(base_, other.base_);
        std::swap(object_, other.object_);
    }

    void reset() { smart_ptr().swap(*this); }

    [[nodiscard]] T* get() const { return object_; }
    T& operator*() const { return *object_; }
    T* operator->() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }

    template <typename U>
    bool operator==(smart_ptr<U> const& other) const
    {
        return object_ == other.get();
    }
    bool operator==(std::nullptr_t) const { return object_ == nullptr; }

private:
    template <typename U>
    friend class smart_ptr;

    smart_base* base_ = nullptr;
    T* object_ = nullptr;
};

/// A new T, owned by the pointer that comes back.
template <typename T, typename... Arguments>
[[nodiscard]] smart_ptr<T> make_smart(Arguments&&... arguments)
{
    return smart_ptr<T>(new T(std::forward<Arguments>(arguments)...));
}

template <typename T>
struct std::hash<smart_ptr<T>> {
    std::size_t operator()(smart_ptr<T> const& pointer) const noexcept
    {
        return std::hash<T*>()(pointer.get());
    }
};

namespace boost {

/// The same object as a T, or null where it is none.
template <typename T, typename U>
[[nodiscard]] ::smart_ptr<T> dynamic_pointer_cast(::smart_ptr<U> const& pointer)
{
    return ::smart_ptr<T>(dynamic_cast<T*>(pointer.get()));
}

} // namespace boost

template <typename T>
class weak_ptr;

/// Root of every shared object that can be watched without being kept alive.
class weak_base : public smart_base {
public:
    weak_base() = default;
    weak_base(weak_base const& other) noexcept : smart_base(other) {}
    weak_base& operator=(weak_base const&) noexcept { return *this; }
    ~weak_base() override;

    void destroy() override;

private:
    template <typename T>
    friend class weak_ptr;

    /// What the object and those who watch it share; outlives the object while anybody watches.
    class Watch : public smart_base {
    public:
        weak_base* object = nullptr;
    };

    smart_ptr<Watch> const& watch();
    void expire();

    smart_ptr<Watch> watch_;
};

/// Watches a T without owning it.
template <typename T>
class weak_ptr {
public:
    weak_ptr() = default;
    /*implicit*/ weak_ptr(smart_ptr<T> const& object) : object_(object.get())
    {
        if (object)
            watch_ = object->watch();
    }

    /// The object, or null once it is gone or on its way out.
    [[nodiscard]] smart_ptr<T> lock() const { return expired() ? smart_ptr<T>() : smart_ptr<T>(object_); }

    [[nodiscard]] bool expired() const { return !watch_ || watch_->object == nullptr; }

private:
    smart_ptr<weak_base::Watch> watch_;
    T* object_ = nullptr;
};
