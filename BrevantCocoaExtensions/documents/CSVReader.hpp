// CSVReader: reads a comma-separated file that fits in memory, one record per call, in file order.
//
// The whole file is decoded once (a byte-order mark for UTF-8, UTF-16 or UTF-32; else UTF-8 when the bytes
// are valid UTF-8; else Windows-1252) and split into lines at the one terminator it uses: "\r\n" if that
// occurs anywhere, else "\n", else "\r". A file that mixes terminators keeps the others inside its lines.
// The reader is strictly line-based: a quoted field cannot span lines.
//
// Typical use:
//     bv::CSVReader reader("classlist.csv");
//     reader.readHeaders();
//     while (auto record = reader.readRecord()) {
//         std::optional<bv::Text> name = reader.fieldValueForName("Name");
//     }
//
// Pitfalls callers rely on:
//   - A blank line ends the data: readRecord answers null there and keeps answering null at that line.
//   - A malformed line (stray characters after a closing quote, or a field count other than the first
//     record's) makes readRecord show the alert "Line #N is malformed." (N counted from 1, the header being
//     line 1) and answer null; the next call reads the following line.
//   - An opening quote with no closing quote on its line throws RangeException out of readRecord.
//   - A missing or unreadable file is not reported: the reader simply has no lines.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv {

class CSVReader {
  public:
    // A reader without lines (give it some with setLines or readLinesFromFileAtPath).
    CSVReader() = default;
    // Loads and splits the file at the path. The header is not read: call readHeaders when there is one.
    explicit CSVReader(const Text& path);
    // The named form of the constructor above.
    [[nodiscard]] static CSVReader initWithFilePath(const Text& path);
    [[nodiscard]] static CSVReader csvReaderWithFilePath(const Text& path);

    // Loads and splits the file; does nothing when the reader already has one or more lines. An unreadable
    // file leaves the reader without lines.
    void readLinesFromFileAtPath(const Text& path);

    // Reads line 0 as the header: headers become its fields (none when it is blank or malformed),
    // numFields their count, and reading goes on at line 1. Does nothing when there are no lines.
    void readHeaders();

    // The fields of the line at currentRecord, or null at the end, at a blank line (which does not move
    // the position) and at a malformed line (after the alert; the position has moved past it).
    // Throws RangeException for an unterminated quoted field or a position beyond the last line.
    std::optional<std::vector<Text>> readRecord();

    // Splits one line into trimmed fields. Null for a blank line (nothing changes) and for a malformed
    // line (no alert); otherwise advances currentRecord, fixes numFields on the first record, and makes the
    // fields the current ones. Throws RangeException for an unterminated quoted field.
    std::optional<std::vector<Text>> readRecord(const Text& line);

    // The current record's field in the first column whose header equals the name exactly (case matters);
    // null for an unknown name. Raises an assertion failure (InternalInconsistencyException) when there is
    // no header or when the current record's field count differs from the header's.
    [[nodiscard]] std::optional<Text> fieldValueForName(const Text& name) const;

    // --- Accessors ------------------------------------------------------------------------------------

    [[nodiscard]] bool firstLineIsHeader() const noexcept { return firstLineIsHeader_; }
    void setFirstLineIsHeader(bool value) noexcept { firstLineIsHeader_ = value; }
    // The detected terminator: "\r\n", "\n", "\r" or the empty text; null before a file is loaded.
    [[nodiscard]] const std::optional<Text>& lineBreak() const noexcept { return lineBreak_; }
    void setLineBreak(std::optional<Text> lineBreak) { lineBreak_ = std::move(lineBreak); }
    // The separator, ',' by default. Only separators in the ASCII range (0 to 127) ever match.
    [[nodiscard]] std::int8_t fieldSeparator() const noexcept { return fieldSeparator_; }
    void setFieldSeparator(std::int8_t separator) noexcept { fieldSeparator_ = separator; }
    // The field count every record must have; 0 until the first record fixes it.
    [[nodiscard]] std::uint64_t numFields() const noexcept { return numFields_; }
    void setNumFields(std::uint64_t count) noexcept { numFields_ = count; }
    // The index of the next line to read; setting it moves the reading position.
    [[nodiscard]] std::uint64_t currentRecord() const noexcept { return currentRecord_; }
    void setCurrentRecord(std::uint64_t index) noexcept { currentRecord_ = index; }
    // The file's lines without terminators (a copy), or null when no file could be read.
    [[nodiscard]] std::optional<std::vector<Text>> lines() const;
    void setLines(const std::optional<std::vector<Text>>& lines);
    // The number of lines, 0 when there are none (a readable empty file has one empty line).
    [[nodiscard]] std::uint64_t countOfLines() const noexcept { return lineSpans_.size(); }

    // The header fields and the last record's fields (empty when none, or after a malformed record).
    [[nodiscard]] const std::vector<Text>& headers() const noexcept;
    [[nodiscard]] const std::vector<Text>& currentFields() const noexcept;

    // Counts, cut to 32 bits.
    [[nodiscard]] std::uint32_t countOfHeaders() const noexcept;
    [[nodiscard]] std::uint32_t countOfCurrentFields() const noexcept;
    // Element access and editing; an index or range outside the list throws RangeException.
    [[nodiscard]] const Text& objectInHeadersAtIndex(std::uint32_t index) const;
    [[nodiscard]] const Text& objectInCurrentFieldsAtIndex(std::uint32_t index) const;
    void getHeadersRange(Text* buffer, Range range) const;
    void getCurrentFieldsRange(Text* buffer, Range range) const;
    void insertObjectInHeadersAtIndex(Text object, std::uint32_t index);
    void insertObjectInCurrentFieldsAtIndex(Text object, std::uint32_t index);
    void removeObjectFromHeadersAtIndex(std::uint32_t index);
    void removeObjectFromCurrentFieldsAtIndex(std::uint32_t index);
    void replaceObjectInHeadersAtIndexWithObject(std::uint32_t index, Text object);
    void replaceObjectInCurrentFieldsAtIndexWithObject(std::uint32_t index, Text object);

    // "<CSVReader: 0x...>", as assertion failures name the reader.
    [[nodiscard]] std::string description() const;

  private:
    struct LineSpan {
        std::size_t offset = 0;
        std::size_t length = 0;
    };

    void setText(std::u16string text);
    [[nodiscard]] std::u16string_view lineAt(std::size_t index) const noexcept {
        return std::u16string_view(text_).substr(lineSpans_[index].offset, lineSpans_[index].length);
    }
    // Splits a trimmed, non-empty line and updates the reading state.
    std::optional<std::vector<Text>> readTrimmedLine(std::u16string_view line);
    void headersChanged() noexcept { headerIndex_.reset(); }

    bool firstLineIsHeader_ = false;
    std::optional<Text> lineBreak_;
    std::optional<std::vector<Text>> headers_;
    std::optional<std::vector<Text>> currentFields_;
    std::u16string text_;              // the decoded file; lines are spans of it
    std::vector<LineSpan> lineSpans_;  // the lines, in file order
    bool hasLines_ = false;            // false until a file was read or lines were set (null lines)
    std::uint64_t numFields_ = 0;
    std::uint64_t currentRecord_ = 0;
    std::int8_t fieldSeparator_ = ',';
    // Header name -> first column with that name, built on first lookup.
    mutable std::optional<std::unordered_map<Text, std::size_t>> headerIndex_;
};

}  // namespace bv
