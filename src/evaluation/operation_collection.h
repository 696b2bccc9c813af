// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "base/cache.h"
#include "vemo/context.h"
#include "vemo/sorted_list.h"

namespace vemo {

// An operator's meaning for one kind of operands.
class Operation {
public:
    virtual ~Operation() = default;
    // Nothing when the operation is not for these operands.
    virtual std::optional<Value> calculate(const Value& left, const Value& right, Context& context) const = 0;
};

using OperationList = SortedList<std::shared_ptr<const Operation>>;

// The operations of each operator, in the order in which they are tried.
class OperationCollection {
public:
    void add(std::u16string_view operatorId, std::shared_ptr<const Operation> operation, std::int64_t priority = 100);
    const OperationList& operations(std::u16string_view operatorId) const;

private:
    TextMap<OperationList> operations_;
    OperationList none_;
};

}  // namespace vemo
