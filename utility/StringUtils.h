#ifndef UTILITY_STRINGUTILS_H_
#define UTILITY_STRINGUTILS_H_

#include "framework/CString.h"
#include "utility/TextArray.h"
#include "utility/UtilityExport.h"

// Text helpers: trimming, yes/no words, prefix, suffix and wildcard
// matching, substring and whole-word search, word and sentence splitting,
// padding and XML escaping. Stateless; it holds nothing and never throws.
//
// Every function with a bCaseSensitive argument compares bytes exactly when
// it is true and folds letters as CString::MakeLower does when it is false.
// Functions without one compare exactly. Positions are byte indexes from 0;
// a search reports -1 when it finds nothing. Word characters are letters,
// digits, underscore and every byte of 0x80 and above (a letter of the
// host's code page).
class VAXO009_API StringUtils {
 public:
  // Removes leading and trailing white space in place.
  static void Trim(CString& text);
  // True when the text is empty or holds white space only.
  static bool IsEffectivelyEmpty(const CString& text);

  // True for "yes", "y", "true", "t" and "1" in any letter case, blanks
  // around them ignored; false for everything else.
  static bool IsYes(const CString& text);
  // The bool that a text such as a column's default value stands for: the
  // yes words are true, everything else false.
  static bool TextToBool(const CString& text);

  // Whether text starts (First) or ends (Last) with the given characters.
  // An empty prefix or suffix matches every text.
  static bool MatchFirstChars(const CString& text, const CString& prefix, bool bCaseSensitive);
  static bool MatchLastChars(const CString& text, const CString& suffix, bool bCaseSensitive);
  // Whether the whole text matches the pattern: "*" stands for any run of
  // characters (also none), "?" for exactly one, anything else for itself.
  static bool MatchSpec(const CString& text, const CString& pattern, bool bCaseSensitive);

  // The count of non-overlapping occurrences of search in text, scanning
  // from the left; 0 for an empty search text.
  static int FindOccurrences(const CString& text, const CString& search, bool bCaseSensitive);
  // The position of the first occurrence at or after nStart; -1 when there
  // is none, search is empty or nStart is outside the text.
  static int FindOccurrenceIndex(const CString& text, const CString& search, bool bCaseSensitive, int nStart);
  // The position of the first occurrence of word at or after nStart whose
  // neighbours on both sides are not word characters (or are the ends of
  // the text). Overlapping candidates are all tried; -1 when none fits.
  static int FindWholeWordMatch(const CString& text, const CString& word, bool bCaseSensitive, int nStart);
  // When every word occurs in text (as a whole word when bWholeWord), the
  // position of the first word's first match; otherwise, or without words,
  // -1. Compares exactly (callers lower-case both sides for a search that
  // ignores case).
  static int FindAllWords(const TextArray& words, const CString& text, bool bWholeWord);

  // The following three replace the contents of their output array.
  //
  // The maximal runs of word characters: blanks and punctuation separate.
  static void GetWords(const CString& text, TextArray& words);
  // Blank-separated words; a double quote opens or closes a phrase whose
  // blanks do not separate, and the quotes themselves are dropped, so
  // `red "dark blue"` gives red and dark blue. A quote left open runs to the
  // end of the text. Empty words are dropped.
  static void GetWordsWithDoubleQuotes(const CString& text, TextArray& words);
  // The pieces between occurrences of separator, empty pieces kept
  // ("1..2" at "." gives 1, empty, 2). An empty text gives no pieces; an
  // empty separator gives the whole text as one piece.
  static void SplitLine(const CString& text, const CString& separator, TextArray& parts);

  // text lengthened to nLength characters by repeating fill, on the left
  // when bLeft, else on the right; the fill is cut to fit exactly. A text
  // already that long, or an empty fill, leaves text unchanged.
  static CString PadString(const CString& text, int nLength, const CString& fill, bool bLeft);

  // The nSentence-th sentence of text (0 the first), trimmed. A sentence
  // ends after ".", "!" or "?" followed by a blank or the end of the text;
  // the text after the last such end is the last sentence. Blank sentences
  // are not counted. Empty when there is no such sentence.
  static CString ParseSentence(const CString& text, int nSentence);

  // A valid XML element name made from text: every character other than
  // an ASCII letter, digit, "_", "-" or "." becomes "_", and a name that
  // would start with a digit, "-" or "." gets a leading "_". Empty stays
  // empty.
  static CString ProcessXMLTag(const CString& text);
  // text with &, <, >, " and ' replaced by their XML entities.
  static CString ProcessXMLValue(const CString& text);
};

#endif  // UTILITY_STRINGUTILS_H_
