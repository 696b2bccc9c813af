// SPDX-License-Identifier: MIT
#include "functions/function_manager.h"

namespace vemo {

void FunctionManager::add(std::u16string id, const std::vector<std::u16string>& phrases,
                          std::shared_ptr<const Function> function, bool offered) {
    for (const std::u16string& phrase : phrases) {
        // The digits of "log10" belong to its name; "log 10" is the logarithm of something else.
        const bool digits = phrase.find_first_of(u"0123456789") != phrase.npos;
        phraseDetector_.add(phrase, id, !digits);
        if (hints_ && offered) hints_->addWords(phrase, completion_weight::function, CompletionKind::function);
    }
    evaluators_.insert_or_assign(std::move(id), std::move(function));
}

const Function* FunctionManager::function(std::u16string_view id) const {
    const auto found = evaluators_.find(id);
    return found == evaluators_.end() ? nullptr : found->second.get();
}

}  // namespace vemo
