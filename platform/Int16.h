#pragma once

#include "platform/RuntimeError.h"

#include <cstdint>

// A 16-bit signed counter whose arithmetic checks its range: any result
// outside -32768..32767 is the overflow run-time error, as the program's
// counters have always behaved.
class Int16
{
public:
    constexpr Int16() = default;
    constexpr Int16(int value) : m_value(checked(value)) {}
    constexpr explicit Int16(long long value) : m_value(checked(value)) {}

    constexpr int value() const { return m_value; }
    constexpr operator int() const { return m_value; }

    Int16 &operator=(int value)
    {
        m_value = checked(value);
        return *this;
    }
    Int16 &operator+=(int delta) { return *this = m_value + delta; }
    Int16 &operator-=(int delta) { return *this = m_value - delta; }
    Int16 &operator++() { return *this += 1; }
    Int16 &operator--() { return *this -= 1; }

    // Exact-match overloads, so 16-bit arithmetic stays checked instead of
    // decaying to plain int.
    friend Int16 operator+(Int16 a, Int16 b) { return Int16(a.m_value + b.m_value); }
    friend Int16 operator+(Int16 a, int b) { return Int16(a.m_value + b); }
    friend Int16 operator+(int a, Int16 b) { return Int16(a + b.m_value); }
    friend Int16 operator-(Int16 a, Int16 b) { return Int16(a.m_value - b.m_value); }
    friend Int16 operator-(Int16 a, int b) { return Int16(a.m_value - b); }
    friend Int16 operator-(int a, Int16 b) { return Int16(a - b.m_value); }
    friend Int16 operator*(Int16 a, Int16 b) { return Int16(a.m_value * b.m_value); }
    friend Int16 operator*(Int16 a, int b) { return Int16(static_cast<long long>(a.m_value) * b); }
    friend Int16 operator*(int a, Int16 b) { return Int16(static_cast<long long>(a) * b.m_value); }

    // Range check used by the operators; also for results computed in plain int.
    static constexpr std::int16_t checked(long long value)
    {
        if (value < -32768 || value > 32767)
            throw RuntimeError(RuntimeError::Overflow);
        return static_cast<std::int16_t>(value);
    }

private:
    std::int16_t m_value = 0;
};
