#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <zellap10/platform/export.h>
#include <zellap10/platform/iterator_level.h>

#if defined(__MINGW_PRINTF_FORMAT)
#define ZELLAP10_PRINTF_MEMBER(format_index, first_argument) \
    __attribute__((format(__MINGW_PRINTF_FORMAT, format_index, first_argument)))
#elif defined(__GNUC__) || defined(__clang__)
#define ZELLAP10_PRINTF_MEMBER(format_index, first_argument) \
    __attribute__((format(printf, format_index, first_argument)))
#else
#define ZELLAP10_PRINTF_MEMBER(format_index, first_argument)
#endif

#if defined(_MSC_VER)
#pragma warning(push)
#pragma warning( \
    disable : 4251)  // members of other libraries' types: application and library share the runtime
#endif

/// An owned, counted text of 8-bit characters, which are stored as they come.
///
/// A null text is treated as an empty one. Any operation that allocates may throw std::bad_alloc; the text is
/// then unchanged.
class ZELLAP10_API CString {
public:
    /// An empty text.
    CString() = default;

    /// A copy of a text that ends with a zero byte; null gives an empty one.
    CString(const char* text) : text_(text_of(text)) {}

    /// Copies a text that ends with a zero byte and may belong to this object.
    CString& operator=(const char* text) { return *this = CString(text); }

    /// Characters in the text, without the terminating zero.
    int GetLength() const { return static_cast<int>(text_.size()); }

    /// Whether the text has no character.
    bool IsEmpty() const { return text_.empty(); }

    /// Replaces the text by the output of printf in the "C" locale, whatever locale the
    /// application has set: the decimal sign is always a point. An argument may point into this same text.
    /// If printf refuses the format, the text is empty. Do not use %n: the C runtime of Windows ends the
    /// process.
    void Format(const char* format, ...) ZELLAP10_PRINTF_MEMBER(2, 3);

    /// The text, which ends with a zero byte. Valid until the next change of this object.
    operator const char*() const { return text_.c_str(); }

    /// Comparison of the texts, byte by byte, each byte a number from 0 to 255, in any locale.
    friend bool operator==(const CString& a, const CString& b) { return a.text_ == b.text_; }
    friend bool operator!=(const CString& a, const CString& b) { return a.text_ != b.text_; }
    friend bool operator<(const CString& a, const CString& b) { return a.text_ < b.text_; }
    friend bool operator>(const CString& a, const CString& b) { return a.text_ > b.text_; }
    friend bool operator<=(const CString& a, const CString& b) { return a.text_ <= b.text_; }
    friend bool operator>=(const CString& a, const CString& b) { return a.text_ >= b.text_; }

    friend bool operator==(const CString& a, const char* b) { return a.text_ == text_of(b); }
    friend bool operator!=(const CString& a, const char* b) { return a.text_ != text_of(b); }
    friend bool operator<(const CString& a, const char* b) { return a.text_ < text_of(b); }
    friend bool operator>(const CString& a, const char* b) { return a.text_ > text_of(b); }
    friend bool operator<=(const CString& a, const char* b) { return a.text_ <= text_of(b); }
    friend bool operator>=(const CString& a, const char* b) { return a.text_ >= text_of(b); }

    friend bool operator==(const char* a, const CString& b) { return text_of(a) == b.text_; }
    friend bool operator!=(const char* a, const CString& b) { return text_of(a) != b.text_; }
    friend bool operator<(const char* a, const CString& b) { return text_of(a) < b.text_; }
    friend bool operator>(const char* a, const CString& b) { return text_of(a) > b.text_; }
    friend bool operator<=(const char* a, const CString& b) { return text_of(a) <= b.text_; }
    friend bool operator>=(const char* a, const CString& b) { return text_of(a) >= b.text_; }

private:
    static const char* text_of(const char* text) { return text != nullptr ? text : ""; }

    std::string text_;
};

/// A position in a CList, or null for none. It is valid only in the list that returned it.
struct ListPosition;
using POSITION = ListPosition*;

/// A list that grows at its tail. There are two ways to visit its elements from the head:
///
///     for (CRefPoint* point : list) use(point);
///     for (POSITION place = list.GetHeadPosition(); place != nullptr;) use(list.GetNext(place));
///
/// A position stays valid until RemoveAll, while elements are added. An iterator of begin or end, and a
/// reference of GetNext, stay valid until the next AddTail or RemoveAll. A list does not own the objects
/// that its pointers point to. The copy of a list has the same elements.
template <class TYPE, class ARG_TYPE = const TYPE&>
class CList {
public:
    /// blockSize is the number of elements that a linked list would allocate at a time. It has no effect.
    explicit CList(std::intptr_t blockSize = 10) { static_cast<void>(blockSize); }

    /// Adds an element. May throw std::bad_alloc; the list is then unchanged.
    POSITION AddTail(ARG_TYPE element) {
        elements_.push_back(element);
        return place_of(elements_.size() - 1);
    }

    /// The position of the first element, or null in an empty list.
    POSITION GetHeadPosition() const { return elements_.empty() ? nullptr : place_of(0); }

    /// Returns the element at a position, which must not be null, and moves it to the next, or to null.
    TYPE& GetNext(POSITION& place) {
        const std::size_t index = step(place);
        return elements_[index];
    }

    /// The same in a constant list.
    const TYPE& GetNext(POSITION& place) const {
        const std::size_t index = step(place);
        return elements_[index];
    }

    auto begin() { return elements_.begin(); }        ///< the iterator of the first element
    auto end() { return elements_.end(); }            ///< the iterator past the last element
    auto begin() const { return elements_.begin(); }  ///< the same in a constant list
    auto end() const { return elements_.end(); }      ///< the same in a constant list

    /// The number of elements.
    std::intptr_t GetCount() const { return static_cast<std::intptr_t>(elements_.size()); }

    /// Whether the list is empty.
    bool IsEmpty() const { return elements_.empty(); }

    /// Removes all elements. Objects that pointers point to are not deleted.
    void RemoveAll() { std::vector<TYPE>().swap(elements_); }

private:
    // A position is the element's number, counted from 1, so that it stays valid if the storage grows.
    static POSITION place_of(std::size_t index) {
        return reinterpret_cast<POSITION>(index + 1);  // NOLINT(performance-no-int-to-ptr): never followed
    }
    std::size_t step(POSITION& place) const {
        const std::size_t index = reinterpret_cast<std::size_t>(place) - 1;
        place = index + 1 < elements_.size() ? place_of(index + 1) : nullptr;
        return index;
    }

    std::vector<TYPE> elements_;
};

/// A width and a height.
struct CSize {
    int cx = 0;  ///< width
    int cy = 0;  ///< height
};

#if defined(_MSC_VER)
#pragma warning(pop)
#endif
