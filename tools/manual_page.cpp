// SPDX-License-Identifier: MIT
// Writes a page of the documentation as a manual page: manual_page PAGE OUTPUT. Of Markdown it knows what stands there:
// headings, paragraphs, lists, tables, code and bold words.

#include <cctype>
#include <fstream>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr std::string_view heading =
    ".TH VEMO 7 \"\" \"Vemo\" \"Miscellaneous Information\"\n.SH NAME\nvemo \\- what can be written on a line\n";

bool startsWith(std::string_view text, std::string_view beginning) {
    return text.substr(0, beginning.size()) == beginning;
}

std::string trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == text.npos) return "";
    return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

std::string escaped(char c) {
    switch (c) {
        case '\\':
            return "\\e";
        case '-':
            return "\\-";
        case '\'':
            return "\\(aq";
        case '^':
            return "\\(ha";
        case '~':
            return "\\(ti";
        case '`':
            return "\\(ga";
        default:
            return std::string(1, c);
    }
}

// Words with their code and bold ones set off; a backslash makes the sign after it an ordinary one. Of a link its text.
std::string inlined(std::string_view text) {
    std::string result;
    bool code = false, bold = false;
    const auto font = [&] { return code || bold ? "\\fB" : "\\fR"; };
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 1 < text.size() && std::ispunct(static_cast<unsigned char>(text[i + 1])) &&
            (!code || text[i + 1] == '|')) {
            result += escaped(text[++i]);
        } else if (text[i] == '`') {
            code = !code;
            result += font();
        } else if (!code && startsWith(text.substr(i), "**")) {
            bold = !bold;
            ++i;
            result += font();
        } else if (!code && text[i] == '[' && text.find("](", i) != text.npos) {
            const std::size_t end = text.find("](", i);
            result += inlined(text.substr(i + 1, end - i - 1));
            i = text.find(')', end);
        } else {
            result += escaped(text[i]);
        }
    }
    return result;
}

// A line of the page that is no request, whatever it begins with.
std::string textLine(const std::string& text) {
    return (startsWith(text, ".") ? "\\&" : "") + text + "\n";
}

std::vector<std::string> cellsOf(std::string_view row) {
    std::vector<std::string> cells(1);
    for (std::size_t i = 1; i < row.size(); ++i) {
        if (row[i] == '\\' && i + 1 < row.size() && row[i + 1] == '|')
            cells.back() += row[i++];
        else if (row[i] == '|') {
            cells.emplace_back();
            continue;
        }
        cells.back() += row[i];
    }
    if (trimmed(cells.back()).empty()) cells.pop_back();
    for (std::string& cell : cells) cell = trimmed(cell);
    return cells;
}

// What is written as a tag, what it is read as after it, and what a third column has after that.
std::string rowText(const std::vector<std::string>& cells, const std::vector<std::string>& header) {
    std::string text = ".TP\n" + textLine(inlined(cells[0]));
    if (cells.size() > 1) text += textLine(inlined(cells[1]));
    if (cells.size() > 2 && !cells[2].empty()) text += textLine("(" + header[2] + ": " + inlined(cells[2]) + ")");
    return text;
}

std::string pageOf(std::istream& document) {
    std::string page(heading), paragraph;
    std::vector<std::string> header;
    bool inTable = false;
    const auto end = [&] {
        if (!paragraph.empty()) page += textLine(inlined(paragraph));
        paragraph.clear();
    };
    for (std::string line; std::getline(document, line);) {
        if (startsWith(line, "|---")) continue;
        if (startsWith(line, "|")) {
            end();
            const auto cells = cellsOf(line);
            if (inTable)
                page += rowText(cells, header);
            else
                header = cells;
            inTable = true;
            continue;
        }
        inTable = false;
        if (startsWith(line, "# ") || startsWith(line, "## ")) {
            end();
            page += startsWith(line, "# ") ? ".SH DESCRIPTION\n" : ".SH \"" + inlined(line.substr(3)) + "\"\n";
        } else if (startsWith(line, "- ")) {
            end();
            page += ".IP \\(bu 2\n";
            paragraph = line.substr(2);
        } else if (trimmed(line).empty()) {
            if (!paragraph.empty()) {
                end();
                page += ".PP\n";
            }
        } else {
            paragraph += (paragraph.empty() ? "" : " ") + trimmed(line);
        }
    }
    end();
    return page + ".SH SEE ALSO\n.BR vemo (1)\n";
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) return 2;
    std::ifstream document(argv[1]);
    std::ofstream output(argv[2], std::ios::binary);
    if (!document || !(output << pageOf(document))) {
        std::cerr << "manual_page: cannot read " << argv[1] << " or write " << argv[2] << '\n';
        return 1;
    }
}
