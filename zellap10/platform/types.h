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
/// A null text is taken as an empty one. Any operation that allocates may throw std::bad_alloc; the text is
/// then as it was.
class ZELLAP10_API CString {
public:
    /// An empty text.
    CString() = default;

    /// A copy of a text that a zero ends; null gives an empty one.
    CString(const char* text) : text_(text_of(text)) {}

    /// Takes a copy of a text that a zero ends, which may lie in this same object.
    CString& operator=(const char* text) { return *this = CString(text); }

    /// Characters in the text, the terminating zero not counted.
    int GetLength() const { return static_cast<int>(text_.size()); }

    /// Whether the text has no character.
    bool IsEmpty() const { return text_.empty(); }

    /// Replaces the text by what printf makes of the arguments in the "C" locale, whatever locale the
    /// application has set: the decimal sign is always a point. An argument may point into this same text.
    /// A format that printf refuses leaves the text empty. Do not use %n: the C runtime of Windows ends the
    /// process.
    void Format(const char* format, ...) ZELLAP10_PRINTF_MEMBER(2, 3);

    /// The text, ended by a zero; good until the next change of this object.
    operator const char*() const { return text_.c_str(); }

    /// Comparison of the texts, byte by byte, each byte a number from 0 to 255; no locale takes part.
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

/// A place in a CList: null stands for no place, all else only means something to the list that gave it.
struct ListPosition;
using POSITION = ListPosition*;

/// A list that grows at its tail and is walked from its head, in either way:
///
///     for (CRefPoint* point : list) use(point);
///     for (POSITION place = list.GetHeadPosition(); place != nullptr;) use(list.GetNext(place));
///
/// A place stays good while elements are added, and ends with RemoveAll. What begin, end and GetNext gave
/// does not: an iterator or a reference to an element is good until the next AddTail or RemoveAll. Pointers
/// in a list are not owned by it. The copy of a list holds the same elements.
template <class TYPE, class ARG_TYPE = const TYPE&>
class CList {
public:
    /// blockSize is how many elements a linked list would allocate at a time; this one grows by its own rule.
    explicit CList(std::intptr_t blockSize = 10) { static_cast<void>(blockSize); }

    /// May throw std::bad_alloc; the list is then as it was.
    POSITION AddTail(ARG_TYPE element) {
        elements_.push_back(element);
        return place_of(elements_.size() - 1);
    }

    /// The first element's place, null in an empty list.
    POSITION GetHeadPosition() const { return elements_.empty() ? nullptr : place_of(0); }

    /// The element at a place, which must not be null; the place moves on to the next, or to null.
    TYPE& GetNext(POSITION& place) {
        const std::size_t index = step(place);
        return elements_[index];
    }

    /// The same in a list that is not to be changed.
    const TYPE& GetNext(POSITION& place) const {
        const std::size_t index = step(place);
        return elements_[index];
    }

    auto begin() { return elements_.begin(); }        ///< where a walk by iterators starts
    auto end() { return elements_.end(); }            ///< where it ends
    auto begin() const { return elements_.begin(); }  ///< the same in a list that is not to be changed
    auto end() const { return elements_.end(); }      ///< where that ends

    /// How many elements there are.
    std::intptr_t GetCount() const { return static_cast<std::intptr_t>(elements_.size()); }

    /// Whether there is none.
    bool IsEmpty() const { return elements_.empty(); }

    /// Takes all elements off the list. What pointers among them point to is not deleted.
    void RemoveAll() { std::vector<TYPE>().swap(elements_); }

private:
    // A place is the element's number, counted from 1, so that it survives the growth of the storage.
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
