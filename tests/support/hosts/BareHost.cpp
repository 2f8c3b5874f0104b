// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// BareHost: an agent's window, as a test writes it, without a toolkit: on the accessibility bus it
// says what Native/FakeHost.h answers, true or not. It is told to show a tree as QtHost.cpp is, any
// change of FakeHost::apply(), where the element #another belongs to another program, and
//
//   slow               before each answer
//   flood              with each answer much that nobody has asked for
//   garble ID          its name is no UTF-8, for which the bus hangs up: it comes back
//   replace            the same tree, made of new elements
//   close, stop, die   its window alone, and itself
//
// Each look at an element is a call "attributes ID" there.

#include "Native/FakeHost.h"
#include "Platform/Accessibility/Bus.h"
#include "Platform/Accessibility/DesktopTrust.h"
#include "support/x11/OtherProgram.h"

#include <array>
#include <csignal>
#include <iostream>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace notch {
namespace {

constexpr auto root = "/org/a11y/atspi/accessible/root";
constexpr auto registry = "org.a11y.atspi.Registry";

const std::map<std::string_view, std::uint32_t> numbers{{role::window, 23}, {role::group, 39},
    {role::button, 43}, {role::staticText, 116}, {role::image, 27}};

class BareHost {
public:
    void run()
    {
        for (;;) {
            while (sd_bus_process(bus_.get(), nullptr) > 0) { }
            if (!bus::isOpen(bus_)) {
                connect();
                continue;
            }
            std::array waited{
                pollfd{STDIN_FILENO, POLLIN, 0}, pollfd{sd_bus_get_fd(bus_.get()), POLLIN, 0}};
            ::poll(waited.data(), waited.size(), -1);
            std::string line;
            if (waited[0].revents == 0)
                continue;
            if (!std::getline(std::cin, line))
                return;
            line == "show" ? show() : host_.apply(line);
            std::cout << "done" << std::endl;
        }
    }

private:
    void connect()
    {
        bus_ = bus::at(DesktopTrust(Seconds{5}).address().value_or(""));
        const auto filter = [](sd_bus_message* message, void* host, sd_bus_error*) {
            return static_cast<BareHost*>(host)->hear(message);
        };
        sd_bus_add_filter(bus_.get(), nullptr, filter, this);
        const char* own = nullptr;
        sd_bus_get_unique_name(bus_.get(), &own);
        bus::call(bus_.get(),
            bus::request(
                bus_.get(), {registry, root}, "org.a11y.atspi.Socket", "Embed", "(so)", own, root),
            Seconds{5});
    }

    void happen(const std::string& word)
    {
        if (word == "replace")
            ++generation_;
        else if (word == "close")
            program_.close(std::exchange(window_, XCB_NONE));
        else if (word == "stop" || word == "die")
            ::raise(word == "stop" ? SIGSTOP : SIGKILL);
        else
            lie_ = word;
    }
    void show()
    {
        std::string tree;
        for (std::string line; std::getline(std::cin, line) && line != ".";)
            tree += line + '\n';
        host_ = FakeHost(tree);
        host_.otherwise = [this](const std::string& word) { happen(word); };
        ++generation_;
        lie_.clear();
        if (window_ == XCB_NONE)
            window_ = program_.openWindow("quillmoss");
        program_.setText(window_, "WM_NAME", "Chat");
    }

    int hear(sd_bus_message* call)
    {
        if (sd_bus_message_is_method_call(call, nullptr, nullptr) <= 0)
            return 0;
        std::string member = sd_bus_message_get_member(call);
        const char* interface = nullptr;
        const char* property = nullptr;
        if (member == "Get" && sd_bus_message_read(call, "ss", &interface, &property) > 0)
            member = property;
        if (lie_ == "slow")
            ::usleep(50'000);
        if (lie_ == "flood")
            flood(sd_bus_message_get_sender(call));
        const std::string path = sd_bus_message_get_path(call);
        const auto own = this->path("");
        const bool isRoot = path == root;
        if (!isRoot && !path.starts_with(own))
            return sd_bus_reply_method_errorf(call, SD_BUS_ERROR_UNKNOWN_OBJECT, "gone");
        answer(call, {"", isRoot ? "application" : path.substr(own.size())}, member);
        return 1;
    }
    std::string path(const std::string& id) const
    {
        return '/' + std::to_string(generation_) + '/' + id;
    }
    template <class T> std::optional<T> read(const AXElement& element, std::string_view name)
    {
        const auto value = host_.attribute(element, name);
        const auto* const read = value ? std::get_if<T>(&*value) : nullptr;
        return read ? std::optional(*read) : std::nullopt;
    }
    int answer(sd_bus_message* call, const AXElement& element, const std::string& member)
    {
        const bool isRoot = element.path == "application";
        if (member == "GetRole")
            return answerRole(call, element);
        if (member == "GetState") // Sensitive, and showing and visible.
            return sd_bus_reply_method_return(call, "au", 2,
                (read<bool>(element, ax::enabled).value_or(false) ? 1U << 24 : 0U)
                    | (read<bool>(element, ax::hidden).value_or(true) ? 0U : 1U << 25 | 1U << 30),
                0U);
        if (member == "Name" || member == "ToolkitName" || member == "Version")
            return answerName(call, element);
        if (member == "GetExtents")
            return answerExtents(call, element);
        if (member == "GetChildren")
            return answerChildren(
                call, read<AXElements>(element, isRoot ? ax::windows : ax::children));
        if (member == "NActions")
            return sd_bus_reply_method_return(
                call, "v", "i", host_.actionNames(element) ? int(host_.actions.size()) : 0);
        if (member == "GetName")
            return sd_bus_reply_method_return(call, "s", "press");
        if (member == "DoAction")
            std::cout << "pressed " << element.path << std::endl;
        return sd_bus_reply_method_return(call, member == "DoAction" ? "b" : "", 1);
    }
    int answerRole(sd_bus_message* call, const AXElement& element)
    {
        constexpr std::array name{ax::role};
        const auto read = host_.attributes(element, name);
        const auto* const role = read ? std::get_if<std::string>(&read->front()) : nullptr;
        return role && numbers.contains(*role)
                 ? sd_bus_reply_method_return(call, "u", numbers.at(*role))
                 : sd_bus_reply_method_errorf(call, SD_BUS_ERROR_UNKNOWN_OBJECT, "gone");
    }
    int answerName(sd_bus_message* call, const AXElement& element)
    {
        return lie_ == "garble " + element.path
                 ? garble(call)
                 : sd_bus_reply_method_return(
                     call, "v", "s", read<std::string>(element, ax::title).value_or("").c_str());
    }
    int answerExtents(sd_bus_message* call, const AXElement& element)
    {
        const auto at = read<AXPoint>(element, ax::position);
        const auto size = read<AXSize>(element, ax::size);
        return at && size
                 ? sd_bus_reply_method_return(
                     call, "(iiii)", int(at->x), int(at->y), int(size->width), int(size->height))
                 : sd_bus_reply_method_errorf(call, SD_BUS_ERROR_UNKNOWN_INTERFACE, "no place");
    }
    int answerChildren(sd_bus_message* call, const std::optional<AXElements>& children)
    {
        const char* own = nullptr;
        sd_bus_get_unique_name(bus_.get(), &own);
        sd_bus_message* made = nullptr;
        sd_bus_message_new_method_return(call, &made);
        const bus::Message reply(made);
        sd_bus_message_open_container(made, 'a', "(so)");
        for (const auto& child : children.value_or(AXElements{}))
            if (child.path == "another")
                sd_bus_message_append(made, "(so)", registry, root);
            else
                sd_bus_message_append(made, "(so)", own, path(child.path).c_str());
        sd_bus_message_close_container(made);
        return sd_bus_send(nullptr, made, nullptr);
    }
    // By hand, since no library makes such a message: a variant of a text of one byte.
    int garble(sd_bus_message* call)
    {
        const std::string to = sd_bus_message_get_sender(call);
        std::uint64_t cookie = 0;
        sd_bus_message_get_cookie(call, &cookie);
        std::string fields;
        const auto number = [](std::string& bytes, std::uint64_t value) {
            bytes.append(reinterpret_cast<const char*>(&value), 4);
        };
        fields += std::string("\5\1u", 3) + '\0';
        number(fields, cookie);
        fields += std::string("\6\1s", 3) + '\0';
        number(fields, to.size());
        fields += to + '\0';
        fields.resize((fields.size() + 7) / 8 * 8);
        fields += std::string("\10\1g\0\1v\0", 7);
        std::string message{"l\2\1\1"};
        for (const auto value : {10UL, 0x7FFFFFFFUL, fields.size()}) // Of the body, and a serial.
            number(message, value);
        message += fields;
        message.resize((message.size() + 7) / 8 * 8);
        message += std::string("\1s\0\0\1\0\0\0\xFF\0", 10);
        sd_bus_flush(bus_.get());
        return ::send(sd_bus_get_fd(bus_.get()), message.data(), message.size(), MSG_NOSIGNAL) > 0;
    }
    void flood(const char* reader)
    {
        for (int i = 0; i < 64; ++i) {
            sd_bus_message* made = nullptr;
            sd_bus_message_new_signal(bus_.get(), &made, root, registry, "Flood");
            const bus::Message signal(made);
            sd_bus_message_append(made, "s", std::string(4096, 'x').c_str());
            sd_bus_send_to(bus_.get(), made, reader, nullptr);
        }
    }

    OtherProgram program_;
    OtherProgram::Window window_ = XCB_NONE;
    bus::Connection bus_;
    FakeHost host_{""};
    std::string lie_;
    int generation_ = 0;
};

} // namespace
} // namespace notch

int main()
{
    notch::BareHost().run();
}
