#pragma once

#include "Utilities/RogueSingleton.h"
#include "Utilities/smart_ptr.h"

#include <functional>
#include <string>
#include <utility>

/// The user's preferences: texts under keys.
///
/// The process's store is RogueSingleton<Prefs, PrefsFactory>::getInstance().
class Prefs : public smart_base {
public:
    class Batch;

    /// The text under `key`; empty where there is none.
    [[nodiscard]] virtual std::string getString(std::string const& key) const = 0;

    virtual void setString(std::string const& key, std::string const& value) = 0;

protected:
    /// For a store that writes its entries down: from now on it holds them back, until as many batches have
    /// ended as have begun.
    virtual void beginBatch() {}

    /// \param committed  otherwise what was set since that batch began is as if it had not been
    virtual void endBatch([[maybe_unused]] bool committed) {}
};

/// Entries that belong together. What is set while it lives can be read from the store at once, and is
/// written down in one piece by commit(), or by that of the outermost batch where there are several. Without
/// commit(), as when an exception ends it, nothing is written and the store has its former entries again. A
/// store that writes nothing down need not know of batches, and then keeps each entry as it is set.
class Prefs::Batch {
public:
    /// \param prefs  must outlive the batch
    explicit Batch(Prefs& prefs) : prefs_(prefs) { prefs_.beginBatch(); }
    Batch(Batch const&) = delete;
    Batch& operator=(Batch const&) = delete;
    ~Batch() { end(false); }

    /// Ends the batch.
    void commit() { end(true); }

private:
    void end(bool committed)
    {
        if (std::exchange(open_, false))
            prefs_.endBatch(committed);
    }

    Prefs& prefs_;
    bool open_ = true;
};

/// Makes the process's store: a PrefsFile at its usual place, or MemoryPrefs where the environment names no
/// such place, unless a host or a test has named another maker.
class PrefsFactory {
public:
    using Maker = std::function<smart_ptr<Prefs>()>;

    [[nodiscard]] static smart_ptr<Prefs> newInstance();

    /// Takes effect with the next instance; an empty maker brings the usual one back.
    static void setMaker(Maker maker);
};

extern template class RogueSingleton<Prefs, PrefsFactory>;
