#pragma once

#include <QByteArray>

#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace benthor::platform {

/// An open file of the system's, closed with its end. -1: none.
class Descriptor {
public:
    explicit Descriptor(int number = -1)
        : number_(number) {}
    ~Descriptor() { close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    Descriptor(Descriptor&& other) noexcept
        : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    bool isOpen() const { return number_ >= 0; }
    int number() const { return number_; }
    int close() { return number_ < 0 ? 0 : ::close(std::exchange(number_, -1)); }

private:
    int number_;
};

/// Whether the name itself, and no link of that name, is the file that is open here.
inline bool isNamed(int file, const QByteArray& path) {
    struct stat opened {};
    struct stat named {};
    return ::fstat(file, &opened) == 0 && ::lstat(path.constData(), &named) == 0 &&
           opened.st_ino == named.st_ino && opened.st_dev == named.st_dev;
}

} // namespace benthor::platform
