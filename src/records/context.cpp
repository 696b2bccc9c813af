// SPDX-License-Identifier: MIT
#include "vemo/context.h"

#include <algorithm>
#include <atomic>
#include <unordered_set>

#include "base/text.h"
#include "records/context_parts.h"

namespace vemo {

namespace {

// Leaves out what contexts note for themselves.
ContextEntries entriesOf(const ContextMap& map) {
    ContextEntries entries;
    map.all([&](const auto& entry) {
        if (!entry.key().starts_with(context_keys::names)) entries.emplace(entry.key(), entry.value());
        return true;
    });
    return entries;
}

// A cheap test for words that can't be variables. It only grows: once a variable is removed it lets more words pass
// than it must.
struct VariableIndex {
    std::unordered_set<char16_t> firstCharacters;
    std::size_t longest = 0;
};

struct EntryEquality {
    const IsEquatable& other;

    template <class T>
    bool operator()(const T& value) const {
        return *other.get<T>() == value;
    }
    bool operator()(const std::u16string& text) const { return canonicallyEqual(text, *other.get<std::u16string>()); }
    template <class T>
    bool operator()(const std::shared_ptr<const T>& pointer) const {
        const auto& theirs = *other.get<std::shared_ptr<const T>>();
        return pointer == theirs || (pointer && theirs && *pointer == *theirs);
    }
};

}  // namespace

bool IsEquatable::isEmptyValue() const {
    const Value* value = get<Value>();
    return value && value->isEmpty();
}

bool IsEquatable::isEqual(const IsEquatable& other) const {
    return storage_.index() == other.storage_.index() && std::visit(EntryEquality{other}, storage_);
}

struct Context::State {
    ContextMap data;
    ContextMap updates;
    ContextMap writtenDependencies;
    std::vector<LineResultPointer> linesDependedOn;  // whose dependencies are still to be written
    std::atomic<bool> dependenciesWait = false;
    QuickTypeData quickTypeData;
    std::unique_ptr<Remarks> remarks;                // null on most lines
    std::shared_ptr<const VariableIndex> variables;  // null before the first variable
    ContextDelegate* delegate = nullptr;
    bool pauseDelegateUpdates = false;
    mutable std::recursive_mutex mutex;

    void set(std::u16string_view key, IsEquatable&& value) { noteVariable(key, data.set(key, std::move(value))); }
    void share(const ContextMap::Entry& entry) { noteVariable(entry.key(), data.setShared(entry)); }

    // Also written on reading, where entries were put off: hence the lock, for several threads may read.
    ContextMap& dependencies() {
        if (!dependenciesWait.load(std::memory_order_acquire)) return writtenDependencies;
        const std::lock_guard lock(mutex);
        for (const LineResultPointer& line : std::exchange(linesDependedOn, {}))
            line->addDependenciesTo(writtenDependencies);
        dependenciesWait.store(false, std::memory_order_release);
        return writtenDependencies;
    }

    // To be called after an entry was set.
    void noteVariable(std::u16string_view key, bool added) {
        if (!key.starts_with(context_keys::variable)) return;
        const std::u16string_view name = key.substr(context_keys::variable.size());
        if (name.empty()) return;
        if (added) noteNames(name, true);
        if (variables && name.size() <= variables->longest && variables->firstCharacters.contains(name.front())) return;
        auto wider = variables ? std::make_shared<VariableIndex>(*variables) : std::make_shared<VariableIndex>();
        wider->firstCharacters.insert(name.front());
        wider->longest = std::max(wider->longest, name.size());
        variables = std::move(wider);
    }

    void noteRemoved(std::u16string_view key) {
        if (key.starts_with(context_keys::variable)) noteNames(key.substr(context_keys::variable.size()), false);
    }

    void noteNames(std::u16string_view name, bool present) {
        const std::u16string_view head = nameHead(name);
        if (head.size() == name.size()) return;
        const std::u16string key = namesKey(head);
        const IsEquatable* before = data.find(key);
        const std::int64_t* number = before ? before->get<std::int64_t>() : nullptr;
        const auto known = number ? static_cast<std::uint64_t>(*number) : 0u;
        const auto hash = static_cast<std::uint64_t>(std::hash<std::u16string_view>{}(name));
        const std::uint64_t sum = present ? known + hash : known - hash;
        if (sum == 0)
            data.erase(key);
        else
            set(key, static_cast<std::int64_t>(sum));
    }
};

Context::Context() : state_(std::make_unique<State>()) {}
Context::Context(const ContextEntries& data) : Context() {
    add(data, false);
}
Context::~Context() = default;
Context::Context(Context&&) noexcept = default;
Context& Context::operator=(Context&&) noexcept = default;

Context Context::copyContext() const {
    return sharing(state_->data);
}

Context ContextParts::layer(const Context& context) {
    return context.sharing(ContextMap(context.state_->data.layer()));
}

Context Context::sharing(ContextMap data) const {
    Context context;
    context.state_->data = std::move(data);
    context.state_->variables = state_->variables;
    return context;
}

void Context::set(std::u16string_view key, std::optional<IsEquatable> value, bool registerUpdate) {
    if (value) {
        if (registerUpdate) state_->updates.set(key, IsEquatable(*value));
        state_->set(key, *std::move(value));
    } else {
        if (registerUpdate) state_->updates.erase(key);
        if (state_->data.erase(key)) state_->noteRemoved(key);
    }
    notifyUnlessPaused();
}

const IsEquatable* Context::find(std::u16string_view key) const {
    return state_->data.find(key);
}

void Context::setValue(std::optional<Value> value, std::u16string_view variable) {
    std::optional<IsEquatable> entry;
    if (value) entry.emplace(*std::move(value));
    set(variableKey(variable), std::move(entry));
}

const Value* Context::getVariable(std::u16string_view name) const {
    return get<Value>(variableKey(name));
}

std::optional<std::int64_t> Context::precision() const {
    const auto* digits = get<std::int64_t>(context_keys::precision);
    constexpr std::int64_t most = 999;
    return digits ? std::optional(std::clamp<std::int64_t>(*digits, 0, most)) : std::nullopt;
}

void Context::setPrecision(std::optional<std::int64_t> digits) {
    std::optional<IsEquatable> entry;
    if (digits) entry.emplace(*digits);
    set(context_keys::precision, std::move(entry));
}

const FormattedValue* Context::grandTotalFormatted() const {
    const auto* total = get<std::shared_ptr<const FormattedValue>>(context_keys::grandTotalFormatted);
    return total ? total->get() : nullptr;
}

bool Context::isGrandTotalPartial() const {
    const bool* partial = get<bool>(context_keys::grandTotalPartial);
    return partial && *partial;
}

void Context::beginUpdates() {
    state_->pauseDelegateUpdates = true;
}

void Context::endUpdates(bool notify) {
    state_->pauseDelegateUpdates = false;
    if (notify) notifyDelegate();
}

void Context::syncUpdate(const std::function<void()>& block) {
    const std::lock_guard lock(state_->mutex);
    beginUpdates();
    block();
    endUpdates(true);
}

void Context::add(const ContextEntries& data, bool registerUpdates) {
    for (const auto& [key, value] : data)
        if (!key.starts_with(context_keys::names)) set(key, value, registerUpdates);
}

void ContextParts::add(Context& context, const ContextMap& data) {
    data.all([&](const auto& entry) {
        // `share` makes these anew from the names of variables, of which both sides may have some.
        if (entry.key().starts_with(context_keys::names)) return true;
        context.state_->share(entry);
        context.notifyUnlessPaused();
        return true;
    });
}

void ContextParts::addUpdatesOf(Context& context, const LineResult& line) {
    for (const LineResult::EntryPointer& entry : line.updates()) {
        context.state_->share(*entry);
        context.notifyUnlessPaused();
    }
}

void Context::addDependencies(const ContextEntries& dependencies) {
    for (const auto& [key, value] : dependencies) state_->dependencies().set(key, IsEquatable(value));
}

void ContextParts::addDependencies(Context& context, const ContextMap& dependencies) {
    ContextMap& mine = context.state_->dependencies();
    if (mine.empty()) {
        mine = dependencies;
        return;
    }
    dependencies.all([&](const auto& entry) {
        mine.setShared(entry);
        return true;
    });
}

void ContextParts::addDependenciesOf(Context& context, LineResultPointer line) {
    context.state_->linesDependedOn.push_back(std::move(line));
    context.state_->dependenciesWait.store(true, std::memory_order_release);
}

void Context::addDependencyOn(std::u16string_view name, std::optional<IsEquatable> value,
                              std::optional<IsEquatable> defaultValue) {
    const std::size_t hash = TextHash{}(name);
    if (!value) {
        if (const IsEquatable* present = state_->data.find(name, hash))
            value = *present;
        else
            value = std::move(defaultValue);
    }
    if (value)
        state_->dependencies().set(name, hash, *std::move(value));
    else
        state_->dependencies().erase(name);
}

bool Context::hasDependencyOn(std::u16string_view name) const {
    return dependencyFor(name) != nullptr;
}

const IsEquatable* Context::dependencyFor(std::u16string_view name) const {
    return state_->dependencies().find(name);
}

bool Context::hasUpdatesFor(const ContextEntries& dependencies) const {
    return std::any_of(dependencies.begin(), dependencies.end(), [&](const auto& entry) {
        const IsEquatable* present = find(entry.first);
        return present && !present->isEqual(entry.second);
    });
}

void Context::addQuickTypeToken(std::u16string_view token) {
    state_->quickTypeData.tokens.emplace_back(token);
}

void Context::addQuickTypeExpression(std::u16string_view expression) {
    state_->quickTypeData.expressions.emplace_back(expression);
}

Remarks& remarksOf(Context& context) {
    auto& remarks = context.state_->remarks;
    if (!remarks) remarks = std::make_unique<Remarks>();
    return *remarks;
}

const Remarks* remarksIfAny(const Context& context) {
    return context.state_->remarks.get();
}

const QuickTypeData& Context::quickTypeData() const {
    return state_->quickTypeData;
}
ContextEntries Context::data() const {
    return entriesOf(state_->data);
}
ContextEntries Context::updates() const {
    return entriesOf(state_->updates);
}
ContextEntries Context::dependencies() const {
    return entriesOf(state_->dependencies());
}
const ContextMap& ContextParts::data(const Context& context) {
    return context.state_->data;
}
const ContextMap& ContextParts::updates(const Context& context) {
    return context.state_->updates;
}
const ContextMap& ContextParts::dependencies(const Context& context) {
    return context.state_->dependencies();
}

bool Context::mayNameVariable(char16_t firstCharacter) const {
    return state_->variables && state_->variables->firstCharacters.contains(firstCharacter);
}

std::size_t Context::longestVariableName() const {
    return state_->variables ? state_->variables->longest : 0;
}

bool Context::isEqual(const Context& other) const {
    return state_->data == other.state_->data && state_->updates == other.state_->updates &&
           state_->dependencies() == other.state_->dependencies() &&
           state_->quickTypeData == other.state_->quickTypeData;
}

void Context::setDelegate(ContextDelegate* delegate) {
    state_->delegate = delegate;
}

void Context::notifyDelegate() {
    if (state_->delegate) state_->delegate->contextUpdated(*this);
}

void Context::notifyUnlessPaused() {
    if (!state_->pauseDelegateUpdates) notifyDelegate();
}

std::recursive_mutex& Context::mutex() const {
    return state_->mutex;
}

}  // namespace vemo
