#pragma once

#include "platform/RuntimeError.h"

#include <array>
#include <cstddef>

// An array indexed 0..Upper whose out-of-range access is the "subscript out
// of range" run-time error instead of undefined behaviour.
template <typename T, int Upper> class FixedArray
{
public:
    static constexpr int LowerBound = 0;
    static constexpr int UpperBound = Upper;

    T &operator[](int index) { return m_items[slot(index)]; }
    const T &operator[](int index) const { return m_items[slot(index)]; }

    void fill(const T &value) { m_items.fill(value); }
    constexpr int size() const { return Upper + 1; }

private:
    static std::size_t slot(int index)
    {
        if (index < 0 || index > Upper)
            throw RuntimeError(RuntimeError::SubscriptOutOfRange);
        return static_cast<std::size_t>(index);
    }

    std::array<T, Upper + 1> m_items{};
};
