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

    template <class T>
    const T* get() const {
        return std::get_if<T>(&storage_);
    }
    // A value without attributes, which a reader records to say that it saw nothing.
    bool isEmptyValue() const;
    bool isEqual(const IsEquatable& other) const;
    friend bool operator==(const IsEquatable& a, const IsEquatable& b) { return a.isEqual(b); }

private:
    Storage storage_;
};

// Completion material collected on a line.
struct QuickTypeData {
    std::vector<std::u16string> tokens;
    std::vector<std::u16string> expressions;

    friend bool operator==(const QuickTypeData&, const QuickTypeData&) = default;
};

// Entries by key, to be walked or handed over: a copy of its own.
using ContextEntries = std::map<std::u16string, IsEquatable, std::less<>>;

class Context;
class ContextMap;
class ContextParts;  // what the engine itself does with a context
class Remarks;

class ContextDelegate {
public:
    virtual ~ContextDelegate() = default;
    // Called on the writer's thread, once for every write that is not paused.
    virtual void contextUpdated(Context& context) = 0;
};

// The state a calculation reads and writes: variables, settings and running values by key, which entries
// were written (`updates`) and which were read with the values seen (`dependencies`).
// Copying takes constant time. Not synchronised, but for `mutex`, which guards a shared context.
class Context {
public:
    Context();
    explicit Context(const ContextEntries& data);
    ~Context();
    Context(Context&&) noexcept;
    Context& operator=(Context&&) noexcept;
    Context(const Context&) = delete;
    Context& operator=(const Context&) = delete;

    // A context with this one's data; no updates, dependencies, completions or delegate.
    Context copyContext() const;

    // Sets or, given nothing, removes an entry and then tells the delegate.
    void set(std::u16string_view key, std::optional<IsEquatable> value, bool registerUpdate = true);
    // The entry, or null. Valid until the context changes.
    const IsEquatable* find(std::u16string_view key) const;
    template <class T>
    const T* get(std::u16string_view key) const {
        const IsEquatable* entry = find(key);
        return entry ? entry->get<T>() : nullptr;
    }

    // Variables live under "var_" and their name, which is in lower case and begins with no digit; an absent value
    // removes one.
    void setValue(std::optional<Value> value, std::u16string_view variable);
    const Value* getVariable(std::u16string_view name) const;

    // Most fraction digits of results; nothing means the default of 2.
    std::optional<std::int64_t> precision() const;
    void setPrecision(std::optional<std::int64_t> digits);
    const FormattedValue* grandTotalFormatted() const;
    // True when the total begins below lines whose amounts could not be added to it.
    bool isGrandTotalPartial() const;

    void beginUpdates();
    void endUpdates(bool notify);
    // Runs the block under `mutex` with notifications paused, then notifies once.
    void syncUpdate(const std::function<void()>& block);

    void add(const ContextEntries& data, bool registerUpdates);
    void addDependencies(const ContextEntries& dependencies);
    // Records what a reader saw under `name`: `value`, else the present entry, else `defaultValue`; else
    // an earlier record is removed.
    void addDependencyOn(std::u16string_view name, std::optional<IsEquatable> value = std::nullopt,
                         std::optional<IsEquatable> defaultValue = std::nullopt);
    bool hasDependencyOn(std::u16string_view name) const;
    const IsEquatable* dependencyFor(std::u16string_view name) const;
    // True when an entry of `dependencies` is present here with another value; absent ones do not count.
    bool hasUpdatesFor(const ContextEntries& dependencies) const;

    void addQuickTypeToken(std::u16string_view token);
    void addQuickTypeExpression(std::u16string_view expression);
    const QuickTypeData& quickTypeData() const;

    // Everything there is, what was written with registration, and what was read with the value seen (a value without
    // attributes for what was absent). Copies: `find` and its like are for single entries.
    ContextEntries data() const;
    ContextEntries updates() const;
    ContextEntries dependencies() const;

    // False when no variable's name starts with this (lower-case) character.
    bool mayNameVariable(char16_t firstCharacter) const;
    // Length of the longest variable name set so far, in UTF-16 units.
    std::size_t longestVariableName() const;

    bool isEqual(const Context& other) const;

    // Not owned; must outlive the context or be reset.
    void setDelegate(ContextDelegate* delegate);
    void notifyDelegate();
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
