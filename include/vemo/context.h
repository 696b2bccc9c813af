// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <utility>
#include <variant>
#include <vector>

#include "vemo/attributed_text.h"
#include "vemo/value.h"

namespace vemo {

// Rates by currency code: units of that currency per one US dollar.
struct CurrencyRatesContainer {
    std::unordered_map<std::u16string, DecimalNumber> rates;

    friend bool operator==(const CurrencyRatesContainer&, const CurrencyRatesContainer&) = default;
};

// True for a type that is one of the alternatives of a variant.
template <class T, class Variant>
inline constexpr bool isAlternative = false;
template <class T, class... Alternatives>
inline constexpr bool isAlternative<T, std::variant<Alternatives...>> = (std::is_same_v<T, Alternatives> || ...);

// What a context can hold under a key. Two entries are equal when they have the same type and compare
// equal: texts by canonical equivalence, numbers numerically (a double NaN equals nothing), the rest by content.
class IsEquatable {
public:
    using Storage =
        std::variant<std::u16string, TimeZone, double, DecimalNumber, bool, std::int64_t, Date, Value, ValuesList,
                     std::shared_ptr<const FormattedValue>, std::shared_ptr<const CurrencyRatesContainer>>;

    template <class T>
    requires isAlternative<T, Storage> IsEquatable(T value) : storage_(std::in_place_type<T>, std::move(value)) {}

    // What it holds, if that is of this type; else null.
    template <class T>
    const T* get() const {
        return std::get_if<T>(&storage_);
    }
    // True for a value without attributes, which a reader records when it found no entry.
    bool isEmptyValue() const;
    bool isEqual(const IsEquatable& other) const;
    friend bool operator==(const IsEquatable& a, const IsEquatable& b) { return a.isEqual(b); }

private:
    Storage storage_;
};

// What a line holds that an application may offer as completions: `tokens` are operators, units and functions,
// `expressions` are conversions such as "inch in cm".
struct QuickTypeData {
    std::vector<std::u16string> tokens;
    std::vector<std::u16string> expressions;

    friend bool operator==(const QuickTypeData&, const QuickTypeData&) = default;
};

// Entries by key: a copy, to walk through or to hand over.
using ContextEntries = std::map<std::u16string, IsEquatable, std::less<>>;

class Context;
class ContextMap;
class ContextParts;  // what the engine itself does with a context
class Remarks;

// Hears of writes to a context.
class ContextDelegate {
public:
    virtual ~ContextDelegate() = default;
    // Called on the writer's thread, once for every write that is not paused.
    virtual void contextUpdated(Context& context) = 0;
};

// The state that a calculation reads and writes: variables, settings and running values by key. It records which
// entries were written (`updates`), and which were read, with the values that were seen (`dependencies`). Copying takes
// constant time. Not synchronised: lock `mutex` around a context that threads share.
class Context {
public:
    Context();
    explicit Context(const ContextEntries& data);
    ~Context();
    Context(Context&&) noexcept;
    Context& operator=(Context&&) noexcept;
    Context(const Context&) = delete;
    Context& operator=(const Context&) = delete;

    // A context with the data of this one, but without its updates, dependencies, completions and delegate.
    Context copyContext() const;

    // Sets an entry, or removes it when there is no value, and tells the delegate. With `registerUpdate`, a write is
    // recorded in `updates`, and a removal takes the entry out of there.
    void set(std::u16string_view key, std::optional<IsEquatable> value, bool registerUpdate = true);
    // The entry, or null. Valid until the context changes.
    const IsEquatable* find(std::u16string_view key) const;
    // The entry, if there is one of this type; else null. Valid until the context changes.
    template <class T>
    const T* get(std::u16string_view key) const {
        const IsEquatable* entry = find(key);
        return entry ? entry->get<T>() : nullptr;
    }

    // Sets a variable, or removes it when there is no value. The name is in lower case and begins with no digit; the
    // variable lives under "var_" and the name.
    void setValue(std::optional<Value> value, std::u16string_view variable);
    // The value of a variable, or null. Valid until the context changes.
    const Value* getVariable(std::u16string_view name) const;

    // Most fraction digits of results, from 0 to 999, which other numbers are moved to; nothing means the default of 2.
    std::optional<std::int64_t> precision() const;
    void setPrecision(std::optional<std::int64_t> digits);
    // The grand total as it is shown; null when there is none. Valid until the context changes.
    const FormattedValue* grandTotalFormatted() const;
    // True when the total begins below lines whose amounts could not be added to it.
    bool isGrandTotalPartial() const;

    // Between these two the delegate is told of no write; with `notify` it is told once at the end. They do not nest.
    void beginUpdates();
    void endUpdates(bool notify);
    // Runs the block under `mutex` with notifications paused, then notifies once.
    void syncUpdate(const std::function<void()>& block);

    // Sets every entry, as `set` does.
    void add(const ContextEntries& data, bool registerUpdates);
    // Records that every one of these entries was read with this value.
    void addDependencies(const ContextEntries& dependencies);
    // Records what a reader saw under `name`: `value`, or else the present entry, or else `defaultValue`. Without any
    // of them, an earlier record is removed.
    void addDependencyOn(std::u16string_view name, std::optional<IsEquatable> value = std::nullopt,
                         std::optional<IsEquatable> defaultValue = std::nullopt);
    bool hasDependencyOn(std::u16string_view name) const;
    // What a reader saw under the name; null when no reader was recorded. Valid until the context changes.
    const IsEquatable* dependencyFor(std::u16string_view name) const;
    // True when an entry of `dependencies` is present here with another value; an absent entry does not count.
    bool hasUpdatesFor(const ContextEntries& dependencies) const;

    // These add to `quickTypeData`.
    void addQuickTypeToken(std::u16string_view token);
    void addQuickTypeExpression(std::u16string_view expression);
    const QuickTypeData& quickTypeData() const;

    // All entries; what was written with registration; and what was read, with the values that were seen (a value
    // without attributes for what was absent). All are copies: `find` and its like are for single entries.
    ContextEntries data() const;
    ContextEntries updates() const;
    ContextEntries dependencies() const;

    // False when no variable's name starts with this character, which must be in lower case.
    bool mayNameVariable(char16_t firstCharacter) const;
    // Length of the longest variable name set so far, in UTF-16 units.
    std::size_t longestVariableName() const;

    // True when data, updates, dependencies and completions are equal.
    bool isEqual(const Context& other) const;

    // The delegate is not owned: it must outlive the context or be reset to null.
    void setDelegate(ContextDelegate* delegate);
    // Tells the delegate, also while updates are paused.
    void notifyDelegate();
    // For threads that share the context. Nothing here locks it but `syncUpdate`, and `dependencies` where they were
    // put off.
    std::recursive_mutex& mutex() const;

private:
    friend class ContextParts;
    friend Remarks& remarksOf(Context& context);
    friend const Remarks* remarksIfAny(const Context& context);
    struct State;

    Context sharing(ContextMap data) const;
    void notifyUnlessPaused();

    std::unique_ptr<State> state_;
};

}  // namespace vemo
