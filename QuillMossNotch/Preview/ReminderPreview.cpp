// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Preview/ReminderPreview.h"

#include "Preview/NotchPicture.h"
#include "Preview/PictureFile.h"
#include "Preview/PreviewModel.h"

#include <cstdio>

namespace notch {
namespace {

constexpr Seconds untilArmed{1.5};

constexpr auto shortQuestion = "发布说明写给谁看？";
constexpr auto longQuestion =
    "这次整理下载目录，你希望我怎样处理重复的文件？目前共找到 1,284 个文件，其中 336 个内容相同、"
    "名称不同，另有 52 个名称相同、内容不同。\n"
    "1. 只列出清单，先不移动任何文件，由我逐一确认后再继续\n"
    "2. 内容相同的只保留最早的一份，其余移到“待删除”文件夹，三十天后再提醒我\n"
    "3. 按项目归档：~/Projects/moss-garden/archive/2024/quarterly-reports/attachments\n"
    "4. 名称相同、内容不同的，在文件名后加上修改日期，两份都保留\n"
    "5. 全部跳过，以后不再询问";

struct Told {
    const char* saved;
    const char* notSaved;
};

int save(PreviewModel& preview, const std::string& path, const Told& told)
{
    const bool failed(createPicture(pictureOfNotch(preview.model, preview.outside.time), path));
    std::fputs(failed ? told.notSaved : told.saved, failed ? stderr : stdout);
    return failed ? 1 : 0;
}

} // namespace

int renderCompletionPreview(const std::string& path)
{
    PreviewModel preview;
    auto& [outside, model] = preview;
    outside.preferences.set(Preference::completionRemindersEnabled, true);
    model.start();
    outside.tell(outside.turnStart("preview"));
    outside.tell(outside.turnEnd("preview"));
    outside.time.advance(untilArmed);
    return save(preview, path,
        {"Synthetic completion preview saved; no real task or app activation.\n",
            "Could not save completion preview; existing files are not overwritten.\n"});
}

int renderQuestionPreview(const QuestionPreviewOptions& options)
{
    PreviewModel preview;
    auto& [outside, model] = preview;
    model.start();
    auto question = FakeDependencies::question("preview");
    question.title = options.isLong ? longQuestion : shortQuestion;
    outside.see(question);
    outside.see(question); // One look is not believed.
    outside.time.advance(untilArmed);
    if (options.failure) {
        outside.host.activates = false;
        model.handoffQuestion(*model.state().questionState.token());
    }
    return save(preview, options.path,
        {"Synthetic question preview saved; no AX, real app activation, approval, or answer.\n",
            "Could not save preview (existing files are not overwritten).\n"});
}

} // namespace notch
