// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace vemo::cli {

// What somebody at a terminal wants with a key.
enum class Press {
    character,
    enter,
    complete,
    completeBack,
    left,
    right,
    wordLeft,
    wordRight,
    start,
    end,
    up,
    down,
    erase,  // the character before the cursor
    eraseHere,
    eraseWord,
    eraseWordRight,
    eraseToStart,
    eraseToEnd,
    putBack,  // what was erased last by words or to an end
    swap,     // the two characters at the cursor
    search,   // earlier lines
    clearScreen,
    drop,        // the line
    endOrErase,  // the end of the input, where the line is empty
    suspend,
    escape,
    resized,  // no key: the terminal has another size
    none,     // no key came in time
    hangUp,   // none will come
};

struct Key {
    Press press = Press::none;
    std::u16string text;  // of a character
    bool pasted = false;
};

// Reads keys from a terminal that hands on every byte.
class KeyReader {
public:
    explicit KeyReader(int descriptor) : descriptor_(descriptor) {}

    // The next key, when one comes within so many milliseconds; below zero, whenever it comes.
    Key next(int milliseconds = -1);
    // True when a key has come already.
    bool hasMore();

private:
    enum class Arrival { bytes, nothing, end };

    Arrival await(int milliseconds);
    bool holds(std::size_t bytes);
    std::string takeSequence();
    Key takeCharacter();
    Key takePasted();

    int descriptor_;
    std::string bytes_;
    bool resized_ = false;  // which is still to be told
    bool pasting_ = false;
    bool afterReturn_ = false;  // a line feed after it ends no other line
};

}  // namespace vemo::cli
