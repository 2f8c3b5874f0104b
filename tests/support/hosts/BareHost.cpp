// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// BareHost: an agent's window, as a test writes it, without a toolkit: on the accessibility bus it
// says what it is told to, true or not. The commands of QtHost.cpp, and
//
//   replace              the same tree, made of new elements
//   deep ID COUNT        so many groups below it, each in the one before
//   adopt ID OWNER PATH  says that this is a child of it, too; . for an element of its own
//   garble ID            its name is no UTF-8, for which the bus hangs up: it comes back
//   slow MILLISECONDS    before each answer
//   flood ID             is its own child, and sends much that nobody has asked for
//   close                its window, not itself
//   at ID: COMMAND       when ID is looked at; when it is looked at again after a scan: again ID:
//   stop, die

#include "Platform/Accessibility/AtspiRole.h"
#include "Platform/Accessibility/Bus.h"
#include "Platform/Accessibility/DesktopTrust.h"
#include "support/TreeText.h"
#include "support/x11/OtherProgram.h"

#include <array>
#include <csignal>
#include <iostream>
#include <map>
#include <poll.h>
#include <sstream>
#include <string>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

namespace notch {
namespace {

constexpr auto root = "/org/a11y/atspi/accessible/root";
constexpr auto accessible = "org.a11y.atspi.Accessible";

void say(const std::string& line)
{
    std::cout << line << std::endl;
}

struct Element {
    std::uint32_t role = 75; // An application.
    std::string name;
    std::uint32_t states = 1U << 24 | 1U << 25 | 1U << 30; // Sensitive, showing, visible.
    std::optional<ScreenRect> frame;
    std::vector<std::pair<std::string, std::string>> children; // Owners and ids.
};

class BareHost {
public:
    void run()
    {
        for (std::string line;;) {
            while (sd_bus_process(bus_.get(), nullptr) > 0) { }
            if (!bus::isOpen(bus_)) {
                connect();
                continue;
            }
            std::array waited{
                pollfd{STDIN_FILENO, POLLIN, 0}, pollfd{sd_bus_get_fd(bus_.get()), POLLIN, 0}};
            ::poll(waited.data(), waited.size(), -1);
            while (waited[0].revents != 0 || std::cin.rdbuf()->in_avail() > 0) {
                if (!std::getline(std::cin, line))
                    return;
                waited[0].revents = 0;
                obey(line);
                say("done");
            }
        }
    }

private:
    void connect()
    {
        bus_ = bus::at(DesktopTrust(Seconds{5}).address().value_or(""));
        sd_bus_add_filter(
            bus_.get(), nullptr,
            [](sd_bus_message* message, void* host, sd_bus_error*) {
                return static_cast<BareHost*>(host)->answer(message);
            },
            this);
        const char* name = nullptr;
        sd_bus_get_unique_name(bus_.get(), &name);
        bus::call(bus_.get(),
            bus::request(bus_.get(), {"org.a11y.atspi.Registry", root}, "org.a11y.atspi.Socket",
                "Embed", "(so)", name, root),
            Seconds{5});
    }

    // Its commands

    void obey(const std::string& line)
    {
        std::istringstream words(line);
        std::string verb, id, text;
        std::getline(words >> verb >> id >> std::ws, text);
        if (id.ends_with(':'))
            (verb == "at" ? atLook_ : atLookAgain_)[id.substr(0, id.size() - 1)] = text;
        else if (verb == "show")
            show();
        else if (verb == "disable")
            elements_.at(id).states &= ~(1U << 24);
        else if (verb == "remove")
            elements_.erase(id);
        else if (verb == "rename")
            elements_.at(id).name = text;
        else if (verb == "replace")
            ++generation_;
        else if (verb == "deep")
            nest(id, std::stoi(text));
        else if (verb == "adopt")
            adopt(id, text);
        else if (verb == "garble")
            garbled_ = id;
        else if (verb == "slow")
            slowness_ = std::stoi(id);
        else if (verb == "flood") {
            floods_ = true;
            adopt(id, ". " + id);
        } else if (verb == "close")
            program_.close(std::exchange(window_, XCB_NONE));
        else if (verb == "stop")
            ::raise(SIGSTOP);
        else if (verb == "die")
            ::raise(SIGKILL);
    }
    void show()
    {
        std::string tree;
        for (std::string line; std::getline(std::cin, line) && line != ".";)
            tree += line + '\n';
        elements_ = {{"", {}}};
        ++generation_;
        garbled_.clear();
        slowness_ = 0;
        floods_ = false;
        for (const auto& shown : parseTree(tree))
            add(shown, "");
        if (window_ == XCB_NONE)
            window_ = program_.openWindow("quillmoss");
        program_.setText(
            window_, "WM_NAME", elements_.at(elements_.at("").children.at(0).second).name);
    }
    void add(const NativeApprovalNode& node, const std::string& parent)
    {
        const std::map<std::string_view, std::uint32_t> roles{{role::window, 23}, {role::group, 39},
            {role::button, 43}, {role::staticText, 116}, {role::image, 27}};
        auto& element = elements_[node.id];
        element.role = roles.at(node.role);
        element.name = node.texts.empty() ? "" : node.texts.front();
        element.frame = node.frame;
        if (!node.enabled)
            element.states &= ~(1U << 24);
        if (!node.visible)
            element.states &= ~(1U << 25);
        elements_.at(parent).children.emplace_back("", node.id);
        for (const auto& child : node.children)
            add(child, node.id);
    }
    void nest(std::string id, int count)
    {
        for (int level = 0; level < count; ++level) {
            const auto below = "below" + std::to_string(level);
            elements_[below].role = 39;
            elements_.at(id).children.emplace_back("", below);
            id = below;
        }
    }
    void adopt(const std::string& id, const std::string& child)
    {
        const auto blank = child.find(' ');
        const auto owner = child.substr(0, blank);
        elements_.at(id).children.emplace_back(owner == "." ? "" : owner, child.substr(blank + 1));
    }

    // Its answers

    std::string path(const std::string& id) const
    {
        return id.empty()          ? root
             : id.starts_with('/') ? id
                                   : '/' + std::to_string(generation_) + '/' + id;
    }
    const Element* find(const std::string& path, std::string& id) const
    {
        const auto prefix = this->path("x").size() - 1;
        id = path == root ? "" : path.substr(std::min(path.size(), prefix));
        const auto found = elements_.find(id);
        return found == elements_.end() || this->path(id) != path ? nullptr : &found->second;
    }
    void notice(const std::string& id, const std::string& member)
    {
        if (member == "GetAttributes")
            looks_.clear(); // A scan begins with that.
        if (member != "GetRole")
            return;
        auto& hooks = ++looks_[id] == 1 ? atLook_ : atLookAgain_;
        const auto hook = hooks.extract(id);
        if (!hook.empty())
            obey(hook.mapped());
    }
    int answer(sd_bus_message* call)
    {
        if (sd_bus_message_is_method_call(call, nullptr, nullptr) <= 0)
            return 0;
        std::string id, member = sd_bus_message_get_member(call);
        const char* interface = nullptr;
        const char* property = nullptr;
        if (member == "Get" && sd_bus_message_read(call, "ss", &interface, &property) > 0)
            member = property;
        find(sd_bus_message_get_path(call), id);
        ::usleep(static_cast<unsigned>(slowness_) * 1000);
        notice(id, member);
        if (floods_)
            flood(sd_bus_message_get_sender(call));
        const auto* const element = find(sd_bus_message_get_path(call), id);
        if (!element)
            return sd_bus_reply_method_errorf(call, SD_BUS_ERROR_UNKNOWN_OBJECT, "gone");
        if (id == garbled_ && !id.empty() && member == "Name")
            return answerGarbled(call);
        return answer(call, *element, member, id);
    }
    int answer(sd_bus_message* call, const Element& element, const std::string& member,
        const std::string& id)
    {
        if (member == "GetRole")
            return sd_bus_reply_method_return(call, "u", element.role);
        if (member == "GetState")
            return sd_bus_reply_method_return(call, "au", 2, element.states, 0U);
        if (member == "Name")
            return sd_bus_reply_method_return(call, "v", "s", element.name.c_str());
        if (member == "ToolkitName" || member == "Version")
            return sd_bus_reply_method_return(call, "v", "s", "Bare");
        if (member == "GetExtents" && element.frame)
            return sd_bus_reply_method_return(call, "(iiii)", int(element.frame->x),
                int(element.frame->y), int(element.frame->width), int(element.frame->height));
        if (member == "GetExtents")
            return sd_bus_reply_method_errorf(call, SD_BUS_ERROR_UNKNOWN_INTERFACE, "no place");
        if (member == "GetChildren")
            return answerChildren(call, element);
        if (member == "NActions")
            return sd_bus_reply_method_return(call, "v", "i", element.role == 43 ? 1 : 0);
        if (member == "GetName")
            return sd_bus_reply_method_return(call, "s", "press");
        if (member == "DoAction")
            say("pressed " + id);
        return sd_bus_reply_method_return(call, member == "DoAction" ? "b" : "", 1);
    }
    int answerChildren(sd_bus_message* call, const Element& element)
    {
        const char* own = nullptr;
        sd_bus_get_unique_name(bus_.get(), &own);
        sd_bus_message* reply = nullptr;
        sd_bus_message_new_method_return(call, &reply);
        const bus::Message owned(reply);
        sd_bus_message_open_container(reply, 'a', "(so)");
        for (const auto& [owner, id] : element.children)
            if (id.starts_with('/') || elements_.contains(id))
                sd_bus_message_append(
                    reply, "(so)", owner.empty() ? own : owner.c_str(), path(id).c_str());
        sd_bus_message_close_container(reply);
        return sd_bus_send(nullptr, reply, nullptr);
    }
    // By hand, since no library makes such a message: a reply with a variant of a text of one byte.
    int answerGarbled(sd_bus_message* call)
    {
        const std::string to = sd_bus_message_get_sender(call);
        std::uint64_t cookie = 0;
        sd_bus_message_get_cookie(call, &cookie);
        std::string bytes{"l\2\1\1"};
        const auto number = [&bytes](std::uint64_t value) {
            bytes.resize((bytes.size() + 3) / 4 * 4);
            for (int byte = 0; byte < 4; ++byte)
                bytes += static_cast<char>(value >> 8 * byte & 0xFF);
        };
        number(10); // The body's size.
        number(0x7FFFFFFF); // A serial number that nothing else has.
        const auto sizeAt = bytes.size();
        number(0);
        bytes += std::string("\5\1u", 3) + '\0';
        number(cookie);
        bytes += std::string("\6\1s", 3) + '\0';
        number(to.size());
        bytes += to + '\0';
        bytes.resize((bytes.size() + 7) / 8 * 8);
        bytes += std::string("\10\1g\0\1v\0", 7);
        bytes[sizeAt] = static_cast<char>(bytes.size() - sizeAt - 4);
        bytes.resize((bytes.size() + 7) / 8 * 8);
        bytes += std::string("\1s\0\0\1\0\0\0\xFF\0", 10);
        sd_bus_flush(bus_.get());
        return ::send(sd_bus_get_fd(bus_.get()), bytes.data(), bytes.size(), MSG_NOSIGNAL) > 0 ? 1
                                                                                               : -1;
    }
    void flood(const char* reader)
    {
        const std::string much(4096, 'x');
        for (int i = 0; i < 64; ++i) {
            sd_bus_message* signal = nullptr;
            sd_bus_message_new_signal(bus_.get(), &signal, root, accessible, "Flood");
            const bus::Message owned(signal);
            sd_bus_message_append(signal, "s", much.c_str());
            sd_bus_send_to(bus_.get(), signal, reader, nullptr);
        }
    }

    OtherProgram program_;
    OtherProgram::Window window_ = XCB_NONE;
    bus::Connection bus_;
    std::map<std::string, Element> elements_{{"", {}}}; // By id; the application has none.
    int generation_ = 0;
    std::map<std::string, std::string> atLook_, atLookAgain_; // Commands, by id.
    std::map<std::string, int> looks_; // In this scan, by id.
    std::string garbled_;
    int slowness_ = 0;
    bool floods_ = false;
};

} // namespace
} // namespace notch

int main()
{
    notch::BareHost().run();
}
