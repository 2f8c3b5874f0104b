// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Foundation/Json.h"

#include "Foundation/JsonReader.h"

#include <algorithm>
#include <new>

namespace notch {
namespace {

constexpr std::size_t blanksPerLevel = 2;
// The least size of a piece, but for the last one, when a text is written in pieces.
constexpr std::size_t pieceBytes = 65'536;

bool needsEscape(char character)
{
    return character == '"' || character == '\\' || static_cast<unsigned char>(character) < 0x20;
}

void writeEscaped(std::string& out, char character)
{
    constexpr std::string_view digits = "0123456789abcdef";
    constexpr std::string_view named = "\"\\\b\f\n\r\t";
    constexpr std::string_view names = "\"\\bfnrt";
    out += '\\';
    if (const auto at = named.find(character); at != named.npos) {
        out += names[at];
        return;
    }
    const auto code = static_cast<unsigned char>(character);
    out += "u00";
    out += digits[code >> 4];
    out += digits[code & 0x0F];
}

void writeString(std::string& out, std::string_view text)
{
    out += '"';
    for (;;) {
        const auto special = std::ranges::find_if(text, needsEscape);
        out.append(text.begin(), special);
        if (special == text.end())
            break;
        writeEscaped(out, *special);
        text = {special + 1, text.end()};
    }
    out += '"';
}

class Writer {
public:
    enum class Layout { compact, pretty };
    using Take = std::function<void(std::string_view)>;

    Writer(Layout layout, std::size_t limit)
        : layout_(layout)
        , limit_(limit)
    {
    }
    Writer(Layout layout, const Take& takePiece)
        : layout_(layout)
        , takePiece_(takePiece)
    {
    }

    // Keeps its own stack of open containers: a hook may be given a small one by the system.
    void write(const Json& value)
    {
        begin(value);
        while (!open_.empty() && !isFull())
            writeNext();
    }

    // Nothing when the text is longer than the limit.
    std::optional<std::string> take()
    {
        return isFull() ? std::nullopt : std::optional(std::move(out_));
    }
    void handOver()
    {
        takePiece_(out_);
        out_.clear();
    }

private:
    // A container that is partly written.
    struct Open {
        const Json::Array* array = nullptr; // Either this or `object`.
        const Json::Object* object = nullptr;
        std::size_t element = 0; // The next one.
        Json::Object::const_iterator member{};

        bool isEmpty() const { return array ? array->empty() : object->empty(); }
        bool isAtStart() const { return array ? element == 0 : member == object->begin(); }
        bool isAtEnd() const { return array ? element == array->size() : member == object->end(); }
    };

    // Writes the value, but of a container only what opens it.
    void begin(const Json& value)
    {
        if (const auto* boolean = value.boolean())
            out_ += *boolean ? "true" : "false";
        else if (const auto* number = value.number())
            out_ += number->text();
        else if (const auto* string = value.string())
            writeString(out_, *string);
        else if (const auto* array = value.array())
            open('[', {.array = array});
        else if (const auto* object = value.object())
            open('{', {.object = object, .member = object->begin()});
        else
            out_ += "null";
    }

    void open(char bracket, Open container)
    {
        out_ += bracket;
        open_.push_back(container);
    }

    // The next element of the innermost open container, or its end.
    void writeNext()
    {
        if (open_.back().isAtEnd()) {
            close();
            return;
        }
        if (takePiece_ && out_.size() >= pieceBytes)
            handOver();
        if (!open_.back().isAtStart())
            out_ += ',';
        breakLine();
        if (open_.back().array)
            begin((*open_.back().array)[open_.back().element++]);
        else
            writeMember(*open_.back().member++);
    }

    void close()
    {
        const auto closed = open_.back();
        open_.pop_back();
        if (!closed.isEmpty())
            breakLine();
        out_ += closed.array ? ']' : '}';
    }

    void writeMember(const Json::Object::value_type& member)
    {
        writeString(out_, member.first);
        out_ += layout_ == Layout::pretty ? " : " : ":";
        begin(member.second);
    }

    void breakLine()
    {
        if (layout_ == Layout::compact)
            return;
        out_ += '\n';
        out_.append(open_.size() * blanksPerLevel, ' ');
    }

    bool isFull() const { return out_.size() > limit_; }

    Layout layout_;
    std::size_t limit_ = std::string::npos;
    Take takePiece_; // Empty: the text is wanted as a whole.
    std::vector<Open> open_; // The innermost last.
    std::string out_;
};

std::optional<std::string> written(
    const Json& value, Writer::Layout layout, std::size_t limit = std::string::npos)
{
    Writer writer(layout, limit);
    writer.write(value);
    return writer.take();
}

} // namespace

// Takes each container out of the one that holds it before that is destroyed, so that a deep value
// needs no more stack than a flat one.
Json::~Json()
{
    if (!hasElements())
        return;
    try {
        std::vector<Json> open;
        open.push_back(std::move(*this));
        while (!open.empty()) {
            if (auto inner = open.back().takeContainer())
                open.push_back(std::move(*inner));
            else
                open.pop_back();
        }
    } catch (const std::bad_alloc&) { // What is left is destroyed by recursion.
    }
}

bool Json::hasElements() const
{
    return (array() && !array()->empty()) || (object() && !object()->empty());
}

std::optional<Json> Json::takeContainer()
{
    std::optional<Json> taken;
    for (auto* all = array(); all && !all->empty() && !taken; all->pop_back())
        if (all->back().hasElements())
            taken = std::move(all->back());
    for (auto* all = object(); all && !all->empty() && !taken; all->erase(all->begin()))
        if (all->begin()->second.hasElements())
            taken = std::move(all->begin()->second);
    return taken;
}

std::optional<Json> Json::parse(std::string_view text)
{
    return readJson(text, maximumDepth);
}

std::optional<Json> Json::parseOutline(std::string_view text, std::size_t levels)
{
    return readJson(text, levels);
}

const Json* Json::member(std::string_view key) const
{
    const auto* members = object();
    if (!members)
        return nullptr;
    const auto found = members->find(key);
    return found == members->end() ? nullptr : &found->second;
}

const std::string* Json::string(std::string_view key) const
{
    const auto* value = member(key);
    return value ? value->string() : nullptr;
}

std::string Json::compact() const
{
    return *written(*this, Writer::Layout::compact);
}

std::string Json::pretty() const
{
    return *written(*this, Writer::Layout::pretty);
}

std::optional<std::string> Json::pretty(std::size_t maximumBytes) const
{
    return written(*this, Writer::Layout::pretty, maximumBytes);
}

void Json::pretty(const std::function<void(std::string_view)>& take) const
{
    Writer writer(Writer::Layout::pretty, take);
    writer.write(*this);
    writer.handOver();
}

} // namespace notch
