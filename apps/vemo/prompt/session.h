// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "prompt/history.h"
#include "prompt/line_editor.h"
#include "prompt/notebook.h"
#include "prompt/prompt.h"
#include "session/files.h"

namespace vemo::cli {

// A prompt at work: the document, what it is shown with, and what commands do to it.
class Session {
public:
    Session(const PromptSetting& setting, const Options& options);

    // Takes the lines that the options begin with. False when they are no use; the person has been told then.
    bool begin(const Options& options);
    // Reads lines until the prompt ends, and gives the exit status.
    int run();

    VemoEngine& engine() { return setting_.engine; }
    const Notebook& notebook() const { return notebook_; }
    const Context& context() const { return context_; }
    // For commands to change.
    session::Layout& layout() { return layout_; }
    void setPrecision(std::optional<std::int64_t> digits);

    // A row of output, in which nothing controls the terminal.
    void say(std::string_view text) const;
    bool agrees(const std::string& question);
    std::optional<VemoEngine::Result> calculate(std::u16string_view text);

    void list();
    void edit(std::size_t index);
    void remove(std::size_t index);
    void undo();
    void clear();
    // False when the file is no use; the person has been told then.
    bool load(const std::string& name, bool mayBeNew = false);
    // Saves to the document's own file where no name is given. False when it was not saved; the person has been told
    // then.
    bool save(const std::string& name);
    // Ends the prompt after this command, unless what is to be saved first can't be.
    void leave();

private:
    void enter(std::u16string_view line);
    void show(const VemoEngine::Result& result, std::size_t index) const;
    std::optional<VemoEngine::Result> calculateWith(std::size_t index, std::u16string_view line);
    std::optional<VemoEngine::Result> settled(std::size_t index, std::u16string_view line);
    LineEditor::Preview preview(std::u16string_view line);
    Completer::Answer complete(std::u16string_view text);
    bool isWaiting() const;
    std::string commandIn(std::u16string_view line);
    void tellOfRates(ReasonCode reason);
    void tellProblems() const;

    static constexpr std::size_t newLine = ~std::size_t(0);  // instead of one that is being changed

    const PromptSetting& setting_;
    Context context_;
    session::Layout layout_;
    Notebook notebook_;
    session::FileStamp fileStamp_;  // as it was read or written last
    std::size_t edited_ = newLine;
    bool ended_ = false;
    bool waited_ = false;
    bool toldOfRates_ = false;
    Completer completer_;
    bool learned_ = true;  // the completion knows the document as it is
    History history_;
    LineEditor::Hooks hooks_;
    LineEditor editor_;
};

}  // namespace vemo::cli
