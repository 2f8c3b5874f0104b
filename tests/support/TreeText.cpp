// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "support/TreeText.h"

#include <algorithm>
#include <functional>
#include <sstream>
#include <stdexcept>

namespace notch {
namespace {

std::string quotedText(std::istringstream& line)
{
    std::string text;
    for (char character = 0; line.get(character) && character != '"';) {
        const bool escaped = character == '\\' && line.peek() == 'n';
        text += escaped ? '\n' : character;
        if (escaped)
            line.get();
    }
    return text;
}

ScreenRect rect(std::istringstream& line)
{
    ScreenRect frame;
    char comma = 0;
    line >> frame.x >> comma >> frame.y >> comma >> frame.width >> comma >> frame.height;
    return frame;
}

NativeApprovalNode parseNode(const std::string& text, std::size_t number)
{
    std::istringstream line(text);
    NativeApprovalNode node;
    line >> node.role;
    node.role.insert(0, "AX");
    node.id = "n" + std::to_string(number);
    node.enabled = node.visible = true;
    for (char mark = 0; line >> mark;) {
        std::string word;
        if (mark == '"')
            node.texts.push_back(quotedText(line));
        else if (mark == '@')
            node.frame = rect(line);
        else if (mark == '#' && line >> word)
            node.id = word == "-" ? "" : word;
        else if (mark == '-' && line >> word && (word == "visible" || word == "enabled"))
            (word == "visible" ? node.visible : node.enabled) = false;
        else
            throw std::invalid_argument("no node: " + text);
    }
    return node;
}

void eachBelow(NativeApprovalNode& node, const std::function<void(NativeApprovalNode&)>& visit)
{
    visit(node);
    for (auto& child : node.children)
        eachBelow(child, visit);
}

void editFrame(NativeApprovalNode& edited, char field, double value)
{
    auto& own = *edited.frame;
    eachBelow(edited, [&](NativeApprovalNode& node) {
        if (!node.frame)
            return;
        auto& frame = *node.frame;
        if (field == '*')
            frame = {frame.x * value, frame.y * value, frame.width * value, frame.height * value};
        frame.x += field == 'x' ? value : 0;
        frame.y += field == 'y' ? value : field == 'h' && &frame != &own ? value / 2 : 0;
    });
    own.width += field == 'w' ? value : 0;
    own.height += field == 'h' ? value : 0;
}

void edit(NativeApprovalNode& node, const std::string& change)
{
    if (change == "-visible")
        node.visible = false;
    else if (change == "-enabled")
        node.enabled = false;
    else if (change == "-frame")
        node.frame.reset();
    else if (change[0] == '=')
        node.role = "AX" + change.substr(1);
    else if (node.frame && change[0] == '*')
        editFrame(node, '*', std::stod(change.substr(1)));
    else if (node.frame)
        editFrame(node, change.at(1), std::stod(change.substr(2)));
}

} // namespace

std::vector<NativeApprovalNode> parseTree(std::string_view text)
{
    std::vector<NativeApprovalNode> roots;
    std::vector<std::vector<NativeApprovalNode>*> levels{&roots};
    std::istringstream lines{std::string(text)};
    std::size_t number = 0;
    for (std::string line; std::getline(lines, line);) {
        const auto indent = line.find_first_not_of(' ');
        if (indent == std::string::npos)
            continue;
        levels.resize(
            std::min(indent / 2 + 1, levels.size())); // Never below a node that is not there.
        auto& siblings = *levels.back();
        siblings.push_back(parseNode(line, ++number));
        levels.push_back(&siblings.back().children);
    }
    return roots;
}

void editNodes(std::vector<NativeApprovalNode>& roots, const std::string& edits)
{
    std::istringstream list(edits);
    for (std::string word; list >> word;) {
        const auto end = word.find_first_of(".*-=");
        for (auto& root : roots) {
            eachBelow(root, [&](NativeApprovalNode& node) {
                if (node.id == word.substr(0, end))
                    edit(node, word.substr(end));
            });
        }
    }
}

} // namespace notch
