#pragma once

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

} // namespace benthor::platform
