// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "HookConfiguration/Location.h"

#include "Foundation/UUID.h"
#include "HookConfiguration/HookInstaller.h"
#include "HookConfiguration/PrivateEntries.h"
#include "HookConfiguration/SettingsDocument.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>

namespace notch {
namespace {

using Failure = HookInstaller::Failure;

constexpr const char* lockName = ".quillmoss-notch-v1.lock";
constexpr const char* backupDirectoryName = ".quillmoss-notch-backups";
constexpr std::string_view temporaryNameEnd = ".tmp";

constexpr ReadWording installerWording{
    .noRoot = "无法打开根目录。",
    .badDirectory =
        [](std::string_view piece, int systemErrno) {
            return "无法安全打开目录 " + std::string(piece) + "：" + std::strerror(systemErrno)
                 + "；符号链接不受支持。";
        },
    .badFile = "无法安全读取配置文件（符号链接不受支持）。",
    .notPlain = "配置必须是当前用户拥有的普通文件，不能为硬链接或超大文件。",
    .tooLarge = "配置文件过大。",
    .readFailed = "读取配置失败。",
    .changed = "读取时配置发生变化，请重试。",
};

void writeAll(const FileSystem& files, int file, std::string_view bytes)
{
    while (!bytes.empty()) {
        const auto count = files.write(file, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            throw Failure("写入文件失败；请检查磁盘空间。");
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

UniqueFd openBackupDirectory(const Location& location)
{
    const auto& files = location.files();
    if (!makePrivateDirectory(files, location.directory(), backupDirectoryName))
        throw Failure("无法创建备份目录。");
    constexpr int flags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
    UniqueFd directory(files.openat(location.directory(), backupDirectoryName, flags));
    if (!directory.valid())
        throw Failure("备份目录不能为符号链接。");
    struct stat status { };
    if (files.fstat(directory.get(), &status) != 0 || !isPrivate(status))
        throw Failure("备份目录必须为当前用户私有（0700）。");
    return directory;
}

bool sameDirectory(const Location& a, const Location& b)
{
    struct stat first { };
    struct stat second { };
    return a.files().fstat(a.directory(), &first) == 0
        && b.files().fstat(b.directory(), &second) == 0 && first.st_dev == second.st_dev
        && first.st_ino == second.st_ino;
}

// renameat2(2) answers EINVAL where the file system cannot rename exclusively. A link does not
// overwrite either; taking the first name away then completes the rename.
bool renameWithoutReplacing(const Location& location, const char* from, const char* to)
{
    const auto& files = location.files();
    if (files.renameExclusively(location.directory(), from, to) == 0)
        return true;
    if (errno != EINVAL || files.linkat(location.directory(), from, to) != 0)
        return false;
    files.unlinkat(location.directory(), from);
    return true;
}

std::string temporaryNameStart(const Location& location)
{
    return "." + location.name() + ".";
}

bool isTemporaryName(const Location& location, std::string_view name)
{
    const auto start = temporaryNameStart(location);
    if (!name.starts_with(start) || !name.ends_with(temporaryNameEnd)
        || name.size() < start.size() + temporaryNameEnd.size())
        return false;
    name.remove_prefix(start.size());
    name.remove_suffix(temporaryNameEnd.size());
    const auto id = UUID::parse(name);
    return id && id->text() == name;
}

// Temporary files exist only while the lock is held. One that is there when the lock is taken was
// left by a killed process, and holds a copy of the settings.
void removeLeftovers(const Location& location)
{
    const auto& files = location.files();
    for (const auto& name : files.names(location.directory()))
        if (isTemporaryName(location, name))
            files.unlinkat(location.directory(), name.c_str());
}

// The new bytes in a temporary file, whose name is removed in every case.
class TemporaryFile {
public:
    explicit TemporaryFile(const Location& location)
        : location_(location)
        , name_(temporaryNameStart(location) + UUID::random().text() + temporaryNameEnd.data())
        , file_(createPrivateFile(location.files(), location.directory(), name_))
    {
        if (!file_.valid())
            throw Failure("无法创建原子写入临时文件。");
    }
    ~TemporaryFile()
    {
        file_ = {};
        location_.files().unlinkat(location_.directory(), name_.c_str());
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    void fill(const Json& document) const
    {
        std::int64_t written = 0;
        writeSettings(document, [&](std::string_view piece) {
            // The uniform layout may be longer than the text that was read. A file beyond the limit
            // could never be read again.
            written += static_cast<std::int64_t>(piece.size());
            if (written > maximumConfigurationBytes)
                throw Failure(installerWording.tooLarge);
            writeAll(location_.files(), file_.get(), piece);
        });
        if (location_.files().fsync(file_.get()) != 0)
            throw Failure("配置同步失败。");
    }
    void renameOver() const
    {
        const auto directory = location_.directory();
        if (location_.files().renameat(directory, name_.c_str(), location_.name().c_str()) != 0)
            throw Failure("无法原子替换配置。");
    }
    void renameToNew() const
    {
        if (!renameWithoutReplacing(location_, name_.c_str(), location_.name().c_str()))
            throw Failure("配置已出现或无法原子创建；未覆盖现有文件。");
    }

private:
    const Location& location_;
    std::string name_;
    UniqueFd file_;
};

} // namespace

std::optional<Location> Location::open(
    const FileSystem& files, std::string_view url, MissingDirectories missing)
{
    const bool absolute = url.starts_with('/') && url.find('\0') == url.npos;
    auto pieces = absolute ? pathPieces(url) : std::vector<std::string>();
    if (pieces.empty())
        throw Failure("需要绝对配置文件路径。");
    const auto name = std::move(pieces.back());
    pieces.pop_back();
    const auto isRelative = [](const auto& piece) { return piece == "." || piece == ".."; };
    if (std::ranges::any_of(pieces, isRelative))
        throw Failure("配置路径不能含相对路径组件。");
    auto directory = openDirectory(files, pieces, missing, installerWording);
    if (!directory)
        return std::nullopt;
    return Location(files, url, name, std::move(*directory));
}

FileSnapshot Location::read() const
{
    return readConfiguration(*files_, directory(), name_, installerWording);
}

InstallLock::InstallLock(const Location& location)
    : files_(location.files())
    , file_(files_.openat(location.directory(), lockName,
          O_RDWR | O_CREAT | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC, privateFileMode))
{
    if (!file_.valid())
        throw Failure("无法安全创建安装锁。");
    struct stat status { };
    if (files_.fstat(file_.get(), &status) != 0 || !S_ISREG(status.st_mode) || !isPrivate(status)
        || status.st_nlink != 1)
        throw Failure("安装锁不是安全的私有文件。");
    // A umask may have taken so much away that the next operation could not open it.
    const bool usable = (status.st_mode & privateFileMode) == privateFileMode;
    if (!usable && files_.fchmod(file_.get(), privateFileMode) != 0)
        throw Failure("无法安全创建安装锁。");
    if (files_.flock(file_.get(), LOCK_EX | LOCK_NB) != 0)
        throw Failure("另一次 hook 配置操作正在进行，请稍后重试。");
    removeLeftovers(location);
}

InstallLock::~InstallLock()
{
    files_.flock(file_.get(), LOCK_UN);
}

std::string writePrivateBackup(const Location& location, std::string_view bytes)
{
    const auto& files = location.files();
    const auto directory = openBackupDirectory(location);
    const auto name = location.name() + "." + UUID::random().text() + ".bak";
    const auto file = createPrivateFile(files, directory.get(), name);
    if (!file.valid())
        throw Failure("无法创建备份文件。");
    writeAll(files, file.get(), bytes);
    if (files.fsync(file.get()) != 0)
        throw Failure("备份同步失败；原配置未修改。");
    files.fsync(directory.get()); // Best effort; the file itself is safe.
    const auto& url = location.url();
    return url.substr(0, url.rfind(location.name())) + backupDirectoryName + "/" + name;
}

void verifyUnchanged(const Location& location, const FileSnapshot& oldSnapshot)
{
    const auto now = Location::open(location.files(), location.url(), MissingDirectories::leave);
    if (!now || !sameDirectory(location, *now))
        throw Failure("配置目录发生变化，请重试。");
    if (location.read() != oldSnapshot)
        throw Failure("配置已被其他程序修改；为防止覆盖，操作已取消。");
}

void replaceConfigurationAtomically(
    const Location& location, const Json& newDocument, const FileSnapshot& oldSnapshot)
{
    const TemporaryFile temporary(location);
    temporary.fill(newDocument);
    verifyUnchanged(location, oldSnapshot);
    if (oldSnapshot.data)
        temporary.renameOver();
    else
        temporary.renameToNew();
    location.files().fsync(location.directory()); // Best effort: the rename cannot be undone.
}

} // namespace notch
