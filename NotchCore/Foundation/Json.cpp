// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Foundation/Json.h"

#include "Foundation/JsonReader.h"

#include <algorithm>

namespace notch {
namespace {

constexpr std::size_t blanksPerLevel = 2;
constexpr std::size_t pieceBytes =
    65'536; // Of a text written in pieces, at least, but for the last.

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

    // Recurses as deep as the value, which a read value bounds at Json::maximumDepth.
    void write(const Json& value)
    {
        if (const auto* boolean = value.boolean())
            out_ += *boolean ? "true" : "false";
        else if (const auto* number = value.number())
            out_ += number->text();
        else if (const auto* string = value.string())
            writeString(out_, *string);
        else if (const auto* array = value.array())
            writeAll('[', *array, ']', [this](const Json& element) { write(element); });
        else if (const auto* object = value.object())
            writeAll('{', *object, '}', [this](const auto& member) { writeMember(member); });
        else
            out_ += "null";
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
    template <class Container, class Write>
    void writeAll(char open, const Container& container, char close, const Write& writeOne)
    {
        out_ += open;
        ++level_;
        bool first = true;
        for (const auto& each : container) {
            if (isFull())
                return;
            if (takePiece_ && out_.size() >= pieceBytes)
                handOver();
            if (!first)
                out_ += ',';
            first = false;
            breakLine();
            writeOne(each);
        }
        --level_;
        if (!first)
            breakLine();
        out_ += close;
    }

    void writeMember(const Json::Object::value_type& member)
    {
        writeString(out_, member.first);
        out_ += layout_ == Layout::pretty ? " : " : ":";
        write(member.second);
    }

    void breakLine()
    {
        if (layout_ == Layout::compact)
            return;
        out_ += '\n';
        out_.append(level_ * blanksPerLevel, ' ');
    }

    bool isFull() const { return out_.size() > limit_; }

    Layout layout_;
    std::size_t limit_ = std::string::npos;
    Take takePiece_; // Empty: the text is wanted as a whole.
    std::size_t level_ = 0;
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

std::optional<Json> Json::parse(std::string_view text)
{
    return readJson(text);
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
