// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "HookConfiguration/AnchoredRead.h"

#include "HookConfiguration/HookInstaller.h"
#include "HookConfiguration/PrivateEntries.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <initializer_list>
#include <unistd.h>

namespace notch {
namespace {

using Failure = HookInstaller::Failure;

constexpr int rootFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
constexpr int directoryFlags = rootFlags | O_NOFOLLOW;
constexpr std::size_t readBufferBytes = 16'384;

// A directory on the way need not let itself be listed, as is usual above the homes of a shared
// machine; being allowed to search it is enough. On failure errno says why.
UniqueFd openForSearch(const FileSystem& files, int parent, const char* piece)
{
    UniqueFd directory(files.openat(parent, piece, directoryFlags));
    if (directory.valid() || errno != EACCES)
        return directory;
    const UniqueFd unread(files.openat(parent, piece, directoryFlags | O_PATH));
    return unread.valid() ? UniqueFd(files.openat(unread.get(), ".", directoryFlags | O_PATH))
                          : UniqueFd();
}

// The last directory is opened for reading: fsync(2), which brings a rename in it to the disk,
// refuses an O_PATH descriptor.
enum class Position { onTheWay, last };

// The directory `piece` below `parent`, made first where that is wanted. On failure errno says why.
UniqueFd openPiece(const FileSystem& files, int parent, const char* piece, Position position,
    MissingDirectories missing)
{
    const auto openNow = [&] {
        return position == Position::last ? UniqueFd(files.openat(parent, piece, directoryFlags))
                                          : openForSearch(files, parent, piece);
    };
    UniqueFd directory = openNow();
    if (directory.valid() || errno != ENOENT || missing == MissingDirectories::leave)
        return directory;
    if (!makePrivateDirectory(files, parent, piece))
        throw Failure("无法创建私有配置目录。");
    return openNow();
}

std::string fingerprint(const struct stat& status)
{
    std::string text;
    for (const auto value : std::initializer_list<std::intmax_t>{
             static_cast<std::intmax_t>(status.st_dev),
             static_cast<std::intmax_t>(status.st_ino),
             status.st_size,
             status.st_mtim.tv_sec,
             status.st_mtim.tv_nsec,
             status.st_ctim.tv_sec,
             status.st_ctim.tv_nsec,
             static_cast<std::intmax_t>(status.st_mode),
         })
        text.append(text.empty() ? "" : ":").append(std::to_string(value));
    return text;
}

bool isPlain(const struct stat& status)
{
    return S_ISREG(status.st_mode) && status.st_uid == ::geteuid() && status.st_nlink == 1
        && status.st_size <= maximumConfigurationBytes;
}

std::string readToEnd(
    const FileSystem& files, int file, std::int64_t expectedBytes, const ReadWording& wording)
{
    std::array<char, readBufferBytes> buffer; // Not initialised: read(2) fills it.
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(expectedBytes));
    for (;;) {
        const auto count = files.read(file, buffer.data(), buffer.size());
        if (count == 0)
            return bytes;
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            throw Failure(wording.readFailed);
        bytes.append(buffer.data(), static_cast<std::size_t>(count));
        if (bytes.size() > static_cast<std::size_t>(maximumConfigurationBytes))
            throw Failure(wording.tooLarge);
    }
}

} // namespace

std::vector<std::string> pathPieces(std::string_view path)
{
    std::vector<std::string> pieces;
    while (!path.empty()) {
        const auto piece = path.substr(0, path.find('/'));
        path.remove_prefix(std::min(path.size(), piece.size() + 1));
        if (!piece.empty())
            pieces.emplace_back(piece);
    }
    return pieces;
}

std::optional<UniqueFd> openDirectory(const FileSystem& files,
    const std::vector<std::string>& pieces, MissingDirectories missing, const ReadWording& wording)
{
    UniqueFd current(files.open("/", rootFlags));
    if (!current.valid())
        throw Failure(wording.noRoot);
    for (const auto& piece : pieces) {
        const auto position = &piece == &pieces.back() ? Position::last : Position::onTheWay;
        auto next = openPiece(files, current.get(), piece.c_str(), position, missing);
        if (!next.valid() && errno == ENOENT && missing == MissingDirectories::leave)
            return std::nullopt;
        if (!next.valid())
            throw Failure(wording.badDirectory(piece, errno));
        current = std::move(next);
    }
    return current;
}

FileSnapshot readConfiguration(
    const FileSystem& files, int directory, const std::string& name, const ReadWording& wording)
{
    const UniqueFd file(
        files.openat(directory, name.c_str(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC));
    if (!file.valid() && errno == ENOENT)
        return {};
    if (!file.valid())
        throw Failure(wording.badFile);
    struct stat before { };
    const bool known = files.fstat(file.get(), &before) == 0;
    if (known && before.st_nlink == 0) // Replaced since it was opened.
        throw Failure(wording.changed);
    if (!known || !isPlain(before))
        throw Failure(wording.notPlain);
    auto bytes = readToEnd(files, file.get(), before.st_size, wording);
    struct stat after { };
    if (files.fstat(file.get(), &after) != 0 || fingerprint(after) != fingerprint(before))
        throw Failure(wording.changed);
    return {.data = std::move(bytes), .fingerprint = fingerprint(before)};
}

} // namespace notch
