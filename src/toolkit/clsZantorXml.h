#pragma once

#include <vector>

#include "platform/text.h"

namespace fiar {

/// Reads the elements of tagged text: "<name>content</name>" or, with attributes after a single space,
/// "<name attributes>content</name>" and "<name attributes/>". Names match in any letter case. No text makes
/// it throw or fail to end, and its time grows with the text's length (times the number of steps of a path,
/// and of self-closing elements that share their last tag).
class clsZantorXml {
public:
  /// The content of an element, with all spaces and line ends between its tags.
  /// \param tagPath the element's name, or several from the outside in with "\" between them; several give
  ///   the content without spaces around it. A name may end in its number among those of that name:
  ///   "item[2]"; an element that stands inside another one of its name is part of that one. An empty name
  ///   after a step (or an empty path) gives "ERR: Wrong Key".
  /// \param tagParams receives the attributes of the element that was matched last; kept where it has none,
  ///   emptied where the result is a `notFoundValue` that is not empty.
  /// \param defaultValue the result in the place of an empty one.
  /// \param notFoundValue the result where a name of the path, or its number, is absent.
  Text getTag(TextView xmlText, TextView tagPath, Text& tagParams, TextView defaultValue,
              TextView notFoundValue);

  /// How often `marker` stands in `source`, in any letter case and without overlaps; -1 for an empty source.
  /// The flag has no meaning.
  static float countOccurrences(TextView source, TextView marker, bool flag);

  /// What stands between the first `openMark` and the first `closeMark` that begins after its first
  /// character; with `withMarks` including both. Empty where one is missing or the two overlap.
  static Text getBetween(TextView source, TextView openMark, TextView closeMark, bool caseSensitive,
                         bool withMarks);

  /// The element matched last, tags included; that of the last step where the path had several.
  const Text& lastElement() const { return lastElement_; }

private:
  Text followPath(TextView xmlText, const std::vector<TextView>& path, TextView defaultValue,
                  TextView notFoundValue);
  Text readElement(TextView text, TextView name, double number, TextView notFoundValue);

  Text lastElement_;
};

}  // namespace fiar
