// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "support/calculators.h"

namespace vemo::test {

// A folder of files that is gone in the end.
class Folder {
public:
    explicit Folder(const std::map<std::string, std::string>& files) {
        std::string pattern = testing::TempDir() + "vemo_scripts_XXXXXX";
        path_ = mkdtemp(pattern.data());
        for (const auto& [name, text] : files) {
            std::filesystem::create_directories((path_ / name).parent_path());
            std::ofstream(path_ / name, std::ios::binary) << text;
        }
    }
    ~Folder() { std::filesystem::remove_all(path_); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

// An engine with scripts and one document.
class Scripted {
public:
    explicit Scripted(const std::map<std::string, std::string>& files, ScriptLimits limits = {})
        : engine(fixedEnvironment()) {
        const Folder folder(files);
        VemoEngine::Config config;
        config.testMode = true;
        config.extensions = folder.path();
        config.scriptLimits = limits;
        engine.buildVemoWorker(config);
    }
    explicit Scripted(const std::string& script, ScriptLimits limits = {})
        : Scripted(std::map<std::string, std::string>{{"test.js", script}}, limits) {}

    std::vector<std::string> results(std::string_view document) {
        Context context;
        std::vector<std::string> texts;
        logs.clear();
        const auto result = engine.calculateSync(utf16(document), context);
        for (const auto& line : result->lines) {
            texts.push_back(utf8(line.formattedResult().regular.value_or(u"")));
            logs.push_back(utf8(line.extensionsLog()));
        }
        return texts;
    }
    std::string result(std::string_view line) { return results(line).back(); }
    std::string log() const { return engine.extensions().at(0).log; }

    VemoEngine engine;
    std::vector<std::string> logs;  // by line of the latest document
};

}  // namespace vemo::test
