// A dialog template put together value by value.
#include "developer/dialog_template.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace {

class TemplateWriter {
  public:
    TemplateWriter& Put16(uint32_t value) {
        bytes_ += static_cast<char>(value & 0xFF);
        bytes_ += static_cast<char>(value >> 8 & 0xFF);
        return *this;
    }
    TemplateWriter& Put32(uint32_t value) { return Put16(value & 0xFFFF).Put16(value >> 16); }
    TemplateWriter& PutText(std::u16string_view text) {
        for (const char16_t unit : text) Put16(unit);
        return Put16(0);
    }
    TemplateWriter& Align() {
        bytes_.resize((bytes_.size() + 3) / 4 * 4);
        return *this;
    }
    const std::string& Bytes() const { return bytes_; }

  private:
    std::string bytes_;
};

std::string SampleTemplate() {
    TemplateWriter writer;
    writer.Put16(1).Put16(0xFFFF).Put32(0).Put32(0).Put32(0x80C800C0).Put16(2);
    writer.Put32(0).Put32(0);                                  // position and size
    writer.Put16(0xFFFF).Put16(7).Put16(0).PutText(u"Größe");  // menu by number, class, caption
    writer.Put16(8).Put16(400).Put16(0x0100).PutText(u"MS Shell Dlg").Align();
    writer.Put32(0).Put32(0).Put32(0x50020000).Put32(0).Put32(0).Put32(0xFFFFFFFF);
    writer.Put16(0xFFFF).Put16(0x82).PutText(u"&Name:").Put16(3).Put16(0).Put16(0).Align();  // 3 bytes of data, and 1
    writer.Put32(0).Put32(0).Put32(0x50010000).Put32(0).Put32(0).Put32(1001);
    writer.PutText(u"SysTreeView32").Put16(0xFFFF).Put16(9).Put16(0);  // text: a resource's number
    return writer.Bytes();
}

}  // namespace

TEST(DialogTemplateTest, CaptionAndControlsAreRead) {
    const auto dialog = ReadDialogTemplate(SampleTemplate());
    ASSERT_TRUE(dialog);
    EXPECT_EQ(dialog->caption, "Größe");
    ASSERT_EQ(dialog->controls.size(), 2u);
    EXPECT_EQ(dialog->controls[0].id, -1);
    EXPECT_EQ(dialog->controls[0].text, "&Name:");
    EXPECT_EQ(dialog->controls[1].id, 1001);
    EXPECT_EQ(dialog->controls[1].text, "");
}

TEST(DialogTemplateTest, WhatEndsTooEarlyOrIsNoExtendedTemplateIsNone) {
    const std::string whole = SampleTemplate();
    for (size_t size = 0; size < whole.size(); ++size) {
        // A copy of just these bytes, so that reading beyond them is seen.
        const std::vector<char> part(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_FALSE(ReadDialogTemplate({part.data(), part.size()})) << size;
    }
    std::string old = whole;
    old[2] = 0;
    EXPECT_FALSE(ReadDialogTemplate(old));
}
