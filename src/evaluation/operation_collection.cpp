// SPDX-License-Identifier: MIT
#include "evaluation/operation_collection.h"

namespace vemo {

void OperationCollection::add(std::u16string_view operatorId, std::shared_ptr<const Operation> operation,
                              std::int64_t priority) {
    operations_[std::u16string(operatorId)].add(std::move(operation), priority);
}

const OperationList& OperationCollection::operations(std::u16string_view operatorId) const {
    const auto found = operations_.find(operatorId);
    return found == operations_.end() ? none_ : found->second;
}

}  // namespace vemo
