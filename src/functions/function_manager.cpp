// SPDX-License-Identifier: MIT
#include "functions/function_manager.h"

namespace vemo {

void FunctionManager::add(std::u16string id, const std::vector<std::u16string>& phrases,
                          std::shared_ptr<const Function> function) {
    for (const std::u16string& phrase : phrases) {
        phraseDetector_.add(phrase, id, true);
        if (hints_) hints_->addWords(phrase, completion_weight::function);
    }
    evaluators_.insert_or_assign(std::move(id), std::move(function));
}

const Function* FunctionManager::function(std::u16string_view id) const {
    const auto found = evaluators_.find(id);
    return found == evaluators_.end() ? nullptr : found->second.get();
}

}  // namespace vemo
