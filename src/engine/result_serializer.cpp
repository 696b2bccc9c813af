// SPDX-License-Identifier: MIT
#include "vemo/result_serializer.h"

#include "engine/line_maker.h"
#include "output/archive/stored_result.h"
#include "platform/file_io.h"

namespace vemo {

namespace {

constexpr std::size_t largestFile = std::size_t(256) << 20;

}  // namespace

void VemoEngineResultSerializer::serialize(const VemoEngine::Result& result, const std::filesystem::path& path) const {
    VemoEngineResultSerializerResult stored;
    stored.attributedText.reserve(result.lines.size());
    stored.formattedResult.reserve(result.lines.size());
    for (const VemoEngine::Result::Line& line : result.lines) {
        stored.attributedText.push_back(line.attributedText());
        stored.formattedResult.push_back(line.formattedResult());
    }
    const std::string bytes = stored.encode();
    if (bytes.size() <= largestFile) replaceFile(path, bytes);
}

std::optional<VemoEngine::Result> VemoEngineResultSerializer::deserialize(const std::filesystem::path& path) const {
    auto bytes = readFileAtMost(path, largestFile);
    auto stored = bytes ? VemoEngineResultSerializerResult::decode(*std::move(bytes)) : std::nullopt;
    if (!stored || stored->attributedText.empty() || stored->attributedText.size() != stored->formattedResult.size())
        return std::nullopt;
    VemoEngine::Result result;
    result.context = std::make_shared<Context>();
    result.lines.reserve(stored->attributedText.size());
    for (std::size_t i = 0; i < stored->attributedText.size(); ++i) {
        result.lines.push_back(
            LineMaker::make(LineResult::make(Value(), ContextMap(), ContextMap(), stored->attributedText[i],
                                             stored->formattedResult[i], QuickTypeData(), u"")));
    }
    return result;
}

}  // namespace vemo
