#pragma once

namespace zellap10::platform {

/// Reads a text as one scan format of sscanf does, in the "C" locale, whatever locale is set. Each
/// operation reads one item and moves past it, or returns false and does not move.
///
/// White space is blank, tab, LF, VT, FF and CR.
class TextScanner {
public:
    /// @param text  ended by a zero; must outlive the scanner
    explicit TextScanner(const char* text) : rest_(text) {}

    /// A blank of a format: any number of white-space characters, or none.
    TextScanner& blanks();

    /// Exactly this character.
    bool literal(char character);

    /// %d: leading white space, an optional sign, decimal digits. A number outside the range of an int is
    /// limited to the range. `value` is written only on success.
    bool integer(int& value);

    /// %lf: leading white space and a number: decimal, hexadecimal ("0x2A"), "inf", "infinity" or "nan", in
    /// upper or lower case. A number that is too large gives infinity. An exponent without digits is skipped,
    /// as in "42e" and "42e+". An incomplete "0x", "infin" or "nan(" is no number. `value` is written only on
    /// success.
    bool real(double& value);

    /// The text that has not been read yet.
    const char* rest() const { return rest_; }

private:
    const char* rest_;
};

/// atof in the "C" locale: the longest number at the start of the text, 0.0 if there is none. "42e" is 42 and
/// "0x" is 0.
double number_of(const char* text);

}  // namespace zellap10::platform
