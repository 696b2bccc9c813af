// SPDX-License-Identifier: MIT
#include "evaluation/operator_collection.h"

namespace vemo {

void OperatorCollection::add(Operator op) {
    auto shared = std::make_shared<const Operator>(std::move(op));
    for (const std::u16string& phrase : shared->phrases) {
        phraseDetector_.add(phrase, shared->id, true);
        if (hints_)
            hints_->add(phrase, shared->id == u"in" ? completion_weight::conversion : completion_weight::usual,
                        CompletionKind::operatorWord);
    }
    for (const std::u16string& symbol : shared->symbols) operatorBySymbol_.insert_or_assign(symbol, shared);
    operatorById_.insert_or_assign(shared->id, shared);
    operators_.push_back(std::move(shared));
}

const Operator* OperatorCollection::withSymbol(std::u16string_view symbol) const {
    const auto found = operatorBySymbol_.find(symbol);
    return found == operatorBySymbol_.end() ? nullptr : found->second.get();
}

int OperatorCollection::priority(std::u16string_view id) const {
    const auto found = operatorById_.find(id);
    return found == operatorById_.end() ? 0 : found->second->priority;
}

}  // namespace vemo
