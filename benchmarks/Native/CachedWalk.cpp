// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

// CachedWalk PID: reads five values of every element of that program with libatspi, twice, and
// writes how many elements there were and how many milliseconds each walk took. The second one has
// all that the library caches.

#include <atspi/atspi.h>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

namespace {

struct Unref {
    void operator()(void* object) const { g_object_unref(object); }
};
using Accessible = std::unique_ptr<AtspiAccessible, Unref>;

Accessible program(int pid)
{
    const Accessible desktop(atspi_get_desktop(0));
    const int count = atspi_accessible_get_child_count(desktop.get(), nullptr);
    for (int i = 0; i < count; ++i) {
        Accessible found(atspi_accessible_get_child_at_index(desktop.get(), i, nullptr));
        if (found && int(atspi_accessible_get_process_id(found.get(), nullptr)) == pid)
            return found;
    }
    return {};
}

int walk(AtspiAccessible* element)
{
    atspi_accessible_get_role(element, nullptr);
    g_free(atspi_accessible_get_name(element, nullptr));
    g_object_unref(atspi_accessible_get_state_set(element));
    if (auto* const component = atspi_accessible_get_component_iface(element)) {
        g_free(atspi_component_get_extents(component, ATSPI_COORD_TYPE_SCREEN, nullptr));
        g_object_unref(component);
    }
    int elements = 1;
    const int count = atspi_accessible_get_child_count(element, nullptr);
    for (int i = 0; i < count; ++i)
        if (const Accessible child{atspi_accessible_get_child_at_index(element, i, nullptr)})
            elements += walk(child.get());
    return elements;
}

} // namespace

int main(int argc, char** argv)
{
    atspi_init();
    const auto host = program(argc > 1 ? std::atoi(argv[1]) : 0);
    for (int i = 0; host && i < 2; ++i) {
        const auto begun = std::chrono::steady_clock::now();
        const int elements = walk(host.get());
        const std::chrono::duration<double, std::milli> took =
            std::chrono::steady_clock::now() - begun;
        std::printf("%d %.1f ", elements, took.count());
    }
    std::puts("");
    return host ? EXIT_SUCCESS : EXIT_FAILURE;
}
