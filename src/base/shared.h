// Shared<T>: a value that copies share until one of them changes it.
//
// A document is copied often (for its history, for keeping unsaved work) and changed in one place at a time: copying
// costs a pointer, a change costs one copy of the block that changes, and blocks that are still the same one are
// known to be equal without a look at them.
#pragma once

#include <atomic>
#include <memory>
#include <utility>

template <typename T>
class Shared {
public:
    Shared() : value_(fresh()) {}
    Shared(T value) : value_(std::make_shared<T>(std::move(value))) {} // implicit: a block is its value

    const T& operator*() const { return *value_; }
    const T* operator->() const { return value_.get(); }

    // The value, for changing it: its own from now on. The reference holds until this block is copied next.
    T& edit() {
        if (value_.use_count() != 1)
            value_ = std::make_shared<T>(*value_);
        else
            // The last other owner may have been a thread: what it read, it read before this.
            std::atomic_thread_fence(std::memory_order_acquire);
        return *value_;
    }
    // Becomes equal to `value`, and stays the same block if it is already.
    void set(const T& value) {
        if (!(value == *value_)) value_ = std::make_shared<T>(value);
    }

    // Whether both are one block, not merely equal.
    bool is(const Shared& other) const { return value_ == other.value_; }
    // What stands for the block while somebody holds it.
    std::weak_ptr<const T> identity() const { return value_; }

    friend bool operator==(const Shared& a, const Shared& b) { return a.is(b) || *a == *b; }

private:
    // Fresh values are one block, never changed: it always has this owner besides.
    static const std::shared_ptr<T>& fresh() {
        static const std::shared_ptr<T> value = std::make_shared<T>();
        return value;
    }

    std::shared_ptr<T> value_;
};
