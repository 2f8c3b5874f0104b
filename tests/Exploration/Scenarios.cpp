// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Scenarios.h"

namespace notch {
namespace {

using Events = std::vector<std::string>;

Events operator+(Events all, const Events& more)
{
    all.insert(all.end(), more.begin(), more.end());
    return all;
}

Events each(const std::string& operation, const Events& names)
{
    Events all;
    for (const auto& name : names)
        all.push_back(operation + ' ' + name);
    return all;
}

Events waiting(const Events& hooks, const Events& cards)
{
    return each("ask", hooks) + each("card", cards) + each("gone", hooks + cards)
         + each("select", hooks + cards) + each("press", hooks + cards);
}

const Events time{"until", "soon"};
const Events deciding{"release", "refuse, release", "frame", "blank", "open", "close", "dismiss"};
const Events opening{"open", "close"};
const Events brief{"brief A"};
const Events screen{"frame", "blank"};
const Events untold{"quietly blank", "tell", "move"};
const Events unfolding{"details", "plain"};
const Events pointer{"enter", "leave", "clickOutside"};
const Events demonstration{"demo hook", "demo native", "endDemo", "press demo"};
const Events keys{"key A", "keyUp", "refuse, keyUp"};
const Events question{"scan Q", "page2 Q", "unseen", "unreadable", "lateScan Q", "goAnswer",
    "deaf, goAnswer", "goAnswerLate"};
const Events turn{"begin A", "end A", "lateEnd A", "age", "openTurn", "deaf, openTurn", "noted",
    "openTurnLate", "notedLate"};
const Events host{"front", "back", "switchApps"};
const Events hosts{"hide", "show", "second", "alone"};
const Events quit{"quit"};

constexpr Seconds coarse{1.0 / 8};

const std::vector<Scenario> all{
    {"requests", coarse, time + waiting({"A", "B"}, {"C"}) + deciding + quit},
    {"screen", coarse, time + waiting({"A"}, {}) + brief + deciding + untold + unfolding + keys},
    {"surface", coarse,
        time + waiting({"A"}, {}) + brief + deciding + pointer + demonstration + quit},
    {"question", coarse, time + opening + screen + pointer + question + host + hosts + quit},
    {"turn", coarse, time + opening + screen + pointer + turn + host + hosts + quit},
    {"reminders", coarse, time + opening + screen + question + turn + host, false, true},
    {"question and request", coarse, time + waiting({"A"}, {}) + deciding + question + host, false,
        true},
    {"turn and request", coarse, time + waiting({"A"}, {}) + deciding + turn + host, false, true},
    {"four requests", coarse, time + waiting({"A", "B", "E"}, {"C"}) + deciding + quit, true},
    {"everything", coarse,
        time + waiting({"A", "B"}, {"C"}) + brief + deciding + untold + unfolding + pointer
            + demonstration + question + turn + host + hosts + keys + quit,
        true},
};

} // namespace

const std::vector<Scenario>& scenarios()
{
    return all;
}

} // namespace notch
