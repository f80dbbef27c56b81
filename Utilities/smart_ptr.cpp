#include "Utilities/smart_ptr.h"

smart_base* smart_base::addRef()
{
    ++count_;
    return this;
}

void smart_base::release()
{
    if (--count_ <= 0)
        destroy();
}

void smart_base::destroy()
{
    delete this;
}

weak_base::~weak_base()
{
    expire();
}

// Those who watch must see the object gone before its destructors run, or one of them could revive it half
// dead.
void weak_base::destroy()
{
    expire();
    smart_base::destroy();
}

smart_ptr<weak_base::Watch> const& weak_base::watch()
{
    if (!watch_) {
        watch_ = make_smart<Watch>();
        watch_->object = this;
    }
    return watch_;
}

void weak_base::expire()
{
    if (watch_)
        watch_->object = nullptr;
}
