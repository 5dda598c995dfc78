#pragma once

// Binary values as upper-case hexadecimal text, and back.

#include "Afx/Exceptions.h"
#include "MorvUt/Export.h"

/// Why a text is no hexadecimal text.
enum InvalidHexReason : int
{
    InvalidHexNone = 0,
    InvalidHexNullText = 1,
    InvalidHexOddLength = 2
};

/// A character that is not 0 to 9 or A to F.
class MORVUT_API InvalidHexCharacterException : public CException
{
    DECLARE_DYNAMIC(InvalidHexCharacterException)
    explicit InvalidHexCharacterException(unsigned char character);
    ~InvalidHexCharacterException() override;
    unsigned char GetCharacter() const noexcept { return m_character; }

private:
    unsigned char m_character;
};

/// A text that is no hexadecimal text as a whole. Its message does not repeat the text, which may be a secret.
class MORVUT_API InvalidHexStringException : public CException
{
    DECLARE_DYNAMIC(InvalidHexStringException)
    InvalidHexStringException(InvalidHexReason reason, const CString& text);
    ~InvalidHexStringException() override;
    InvalidHexReason GetReason() const noexcept { return m_reason; }
    const CString& GetText() const noexcept { return m_text; }
    unsigned GetLength() const noexcept { return static_cast<unsigned>(m_text.GetLength()); }

private:
    InvalidHexReason m_reason;
    CString m_text;
};

class MORVUT_API BinaryToHex
{
public:
    BinaryToHex& operator=(const BinaryToHex&) = default;
    BinaryToHex& operator=(BinaryToHex&&) = default;

    /// Two upper-case digits per byte; empty for size 0 and for null. Throws CInvalidArgException from 2^30 bytes on.
    static CString Convert(const unsigned char* data, unsigned size);

protected:
    static constexpr unsigned char NibbleToChar(unsigned char nibble) noexcept // the upper four bits are ignored
    {
        nibble &= 15;
        return static_cast<unsigned char>(nibble < 10 ? '0' + nibble : 'A' - 10 + nibble);
    }
};

class MORVUT_API HexToBinary
{
public:
    HexToBinary& operator=(const HexToBinary&) = default;
    HexToBinary& operator=(HexToBinary&&) = default;

    /// The bytes of `text`, which the caller ends with delete[]; `*size` is their number. An empty text gives an array
    /// of one byte and size 0. Throws InvalidHexStringException for an odd length, InvalidHexCharacterException for
    /// the first character that is no upper-case digit; nothing is left to free then.
    static unsigned char* Convert(const CString& text, unsigned* size);

protected:
    static unsigned char CharToNibble(unsigned char character); // throws InvalidHexCharacterException
};
