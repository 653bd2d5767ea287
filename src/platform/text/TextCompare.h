#pragma once

#include <QString>

#include <string_view>

/// The one order of texts: without regard to case for all letters, marks before digits before
/// letters, accents after their base letters. Statements, report formulas and sorted trees all
/// compare by it, so that what is listed is what is printed. Texts are equal exactly when they
/// differ in case only.
/// @returns a number below, at or above 0.
int compareText(QStringView a, QStringView b);
/// The same over UTF-8.
int compareText(std::string_view a, std::string_view b);

/// What compareText() compares first of a character, 0 for an accent that stands by itself: one more than its base
/// letter without case, and in the bits from 21 on 0 for marks, 1 for digits, 2 for letters.
char32_t baseWeight(char32_t character);

/// `text` in the form in which texts that differ in case only are the same. One character stays one
/// character, which patterns with single-character wildcards rely on.
QString foldCase(QString text);

/// `text` in capitals, one character for one, so that it still compares equal to `text`.
QString upperCase(QString text);

/// Whether all of `text` is plain ASCII, where one byte is one character.
bool isAscii(std::string_view text);
