// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

namespace notch {

// Windows of the host with a card in them, for hosts made up and real (support/TreeText.h).

inline const std::string groupedCardTree = R"(Window #w @0,0,600,400 "Chat"
  Group #card @0,0,600,400
    StaticText #title @10,10,330,20 "检测到批量删除操作：累计删除数量 12 项，阈值 10"
    StaticText #risk @180,10,220,20 "高风险命令，可能影响系统稳定性"
    StaticText #command @10,40,190,20 "rm -rf build"
    Button #allow @10,70,190,40 "允许本次删除"
    Button #deny @10,114,190,40 "取消删除"
)";

// A further text in the group: its five parts are known by their places alone.
inline const std::string flattenedCardTree = R"(Window #w @0,0,600,400 "Chat"
  Group #card @0,0,600,400
    StaticText #chat @10,300,100,20 "请稍候"
    StaticText #title @10,10,330,20 "检测到批量删除操作：累计删除数量 12 项，阈值 10"
    StaticText #risk @180,10,220,20 "高风险命令，可能影响系统稳定性"
    StaticText #command @10,40,190,20 "rm -rf build"
    Button #allow @10,70,190,40 "允许本次删除"
    Button #deny @10,114,190,40 "取消删除"
)";

inline const std::string questionTree = R"(Window #w @0,0,700,300 "Chat"
  Group #page @0,0,650,250
    StaticText #title @20,20,300,24 "哪一个？"
    Button #previous @340,16,32,32 "上一题"
      Image @352,28,8,8
    StaticText #current @376,22,20,20 "2"
    StaticText @400,22,10,20 "/"
    StaticText @414,22,20,20 "3"
    Button #next @440,16,32,32 "下一题"
      Image @452,28,8,8
    Button #skip @478,16,32,32 "全部跳过"
      Image @490,28,8,8
    Button #row @16,64,560,40 "1 本地"
      StaticText @24,74,16,20 "1"
      StaticText @48,74,400,20 "本地"
      Image @550,74,16,20
)";

} // namespace notch
