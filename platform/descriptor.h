/// A file descriptor with an owner.
#pragma once

#include <utility>

#include <unistd.h>

namespace tavix {

/// Closes its descriptor at the end of its life; a negative one stands for none.
class Descriptor {
public:
    explicit Descriptor(int descriptor = -1) : m_descriptor(descriptor) {}
    ~Descriptor() {
        if (IsOpen())
            close(m_descriptor);
    }
    Descriptor(Descriptor &&other) noexcept : m_descriptor(other.Release()) {}
    Descriptor &operator=(Descriptor &&other) noexcept {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }

    bool IsOpen() const { return m_descriptor >= 0; }
    int Get() const { return m_descriptor; }
    int Release() {
        return std::exchange(m_descriptor, -1);
    } ///< From now on the caller's to close.

private:
    int m_descriptor;
};

} // namespace tavix
