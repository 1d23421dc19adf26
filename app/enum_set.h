#pragma once

#include <QtGlobal>

namespace corvane {

/// A set of values of an enumeration that counts from zero.
template <typename Enum>
class EnumSet {
public:
    /// How many values the enumeration may have.
    static constexpr std::size_t kMost = 64;

    constexpr EnumSet() = default;
    constexpr EnumSet(Enum value)
        : m_bits(quint64{1} << static_cast<unsigned>(value))
    {}

    [[nodiscard]] constexpr bool contains(Enum value) const { return (*this & value).m_bits != 0; }
    [[nodiscard]] constexpr explicit operator bool() const { return m_bits != 0; }

    constexpr EnumSet &operator|=(EnumSet other)
    {
        m_bits |= other.m_bits;
        return *this;
    }
    [[nodiscard]] friend constexpr EnumSet operator|(EnumSet one, EnumSet other) { return one |= other; }
    [[nodiscard]] friend constexpr EnumSet operator&(EnumSet one, EnumSet other)
    {
        one.m_bits &= other.m_bits;
        return one;
    }
    friend constexpr bool operator==(EnumSet, EnumSet) = default;

private:
    quint64 m_bits = 0;
};

} // namespace corvane
