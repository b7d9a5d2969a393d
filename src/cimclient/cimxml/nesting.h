// Levels of elements that may contain elements of their kind.
#pragma once

namespace cimclient {

/// One level more, while it lives.
class Nesting {
public:
    explicit Nesting(int& depth) : depth_(depth) { ++depth_; }
    ~Nesting() { --depth_; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

private:
    int& depth_;
};

}  // namespace cimclient
