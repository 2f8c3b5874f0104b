// SPDX-FileCopyrightText: QuillMossNotch contributors
// SPDX-License-Identifier: MIT

#include "Preview/PictureFile.h"

#include "Foundation/UniqueFd.h"
#include "Transport/Streams.h"

#include <QBuffer>
#include <QByteArray>

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <string_view>
#include <unistd.h>

namespace notch {
namespace {

constexpr mode_t mode = 0666; // Less the process's mask.

std::error_code errorOf(bool succeeded)
{
    return succeeded ? std::error_code() : std::error_code(errno, std::generic_category());
}

// Nothing of a file is made before all its bytes are known.
QByteArray pngOf(const QImage& picture)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, "PNG");
    return bytes;
}

std::error_code fill(const UniqueFd& file, const QByteArray& bytes)
{
    if (bytes.isEmpty())
        return std::make_error_code(std::errc::io_error);
    const std::string_view all(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    return errorOf(writeOutput(file.get(), all));
}

// A full disk may show itself only when the bytes must reach it.
std::error_code fillDurably(const UniqueFd& file, const QByteArray& bytes)
{
    const auto error = fill(file, bytes);
    return error ? error : errorOf(::fsync(file.get()) == 0);
}

// In the folder of the path, without a name: it is gone with the process (open(2), O_TMPFILE).
UniqueFd unnamedFile(const std::string& path)
{
    const auto folder = std::filesystem::path(path).parent_path();
    return UniqueFd(
        ::open(folder.empty() ? "." : folder.c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, mode));
}

// As linkat(2) has it for a file that was opened without a name. Never follows or replaces.
bool giveName(const UniqueFd& file, const std::string& path)
{
    const auto unnamed = "/proc/self/fd/" + std::to_string(file.get());
    return ::linkat(AT_FDCWD, unnamed.c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

// Where every file has a name. Not handled: what is killed here leaves what it had written.
std::error_code createNamed(const QByteArray& bytes, const std::string& path)
{
    const UniqueFd file(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
    if (!file.valid())
        return errorOf(false);
    const auto error = fillDurably(file, bytes);
    if (error)
        ::unlink(path.c_str());
    return error;
}

} // namespace

std::error_code createPicture(const QImage& picture, const std::string& path)
{
    const auto bytes = pngOf(picture);
    const auto file = unnamedFile(path);
    if (!file.valid())
        return errno == EOPNOTSUPP ? createNamed(bytes, path) : errorOf(false);
    const auto error = fillDurably(file, bytes);
    return error ? error : errorOf(giveName(file, path));
}

std::error_code replacePicture(const QImage& picture, const std::string& path)
{
    const auto bytes = pngOf(picture);
    const UniqueFd file(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, mode));
    return file.valid() ? fill(file, bytes) : errorOf(false);
}

} // namespace notch
