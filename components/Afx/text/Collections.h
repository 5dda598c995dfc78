#pragma once

// The arrays that MFC developers expect, over std::vector.

#include <vector>

#include "Afx/text/CString.h"

/// A growing array. Indices count from 0; an index outside the array throws std::out_of_range.
template<class T>
class CArray
{
public:
    int Add(const T& item)
    {
        m_items.push_back(item);
        return GetSize() - 1;
    }
    int GetSize() const noexcept { return static_cast<int>(m_items.size()); }
    int GetCount() const noexcept { return GetSize(); }
    bool IsEmpty() const noexcept { return m_items.empty(); }
    const T& GetAt(int index) const { return m_items.at(static_cast<std::size_t>(index)); }
    void SetAt(int index, const T& item) { m_items.at(static_cast<std::size_t>(index)) = item; }
    void RemoveAt(int index) { m_items.erase(m_items.begin() + (GetAt(index), index)); }
    void RemoveAll() noexcept { m_items.clear(); }
    const T& operator[](int index) const { return GetAt(index); }
    T& operator[](int index) { return m_items.at(static_cast<std::size_t>(index)); }
    auto begin() const noexcept { return m_items.begin(); }
    auto end() const noexcept { return m_items.end(); }

private:
    std::vector<T> m_items;
};

class CStringArray : public CArray<CString>
{};
