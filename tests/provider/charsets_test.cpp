// Character sets by their labels, and guessed where there is no label.
#include <gtest/gtest.h>

#include <random>

#include "text/charset_guess.h"
#include "text/charset_names.h"
#include "text/code_pages.h"

namespace {

struct Labelled {
    const char* label;
    const char* bytes;
    const char* utf8;
};

constexpr Labelled labelledTexts[] = {
    {"UTF-8",
     "Jos\xC3\xA9 \xC5\x81\xC3\xB3"
     "d\xC5\xBA",
     "José Łódź"},
    {"utf8", "Jos\xC3\xA9", "José"},
    {"iso-8859-1", "M\xFCller", "Müller"},
    {"ISO_8859-1", "M\xFCller", "Müller"},
    {"windows-1252", "\x8Cuvre", "Œuvre"},
    {"CP1252", "\x8Cuvre", "Œuvre"},
    {"iso-8859-2", "\xA3ukasz Dvo\xF8\xE1k", "Łukasz Dvořák"},
    {"iso-8859-5", "\xB8\xD2\xD0\xDD", "Иван"},
    {"iso-8859-7", "\xCD\xDF\xEA\xEF\xF2", "Νίκος"},
    {"ISO-8859-9", "I\xFE\xFDk", "Işık"},
    {"ISO-8859-15", "C\xBDur \xA4", "Cœur €"},
    {"windows-1250", "\xA3ukasz Dvo\xF8\xE1k", "Łukasz Dvořák"},
    {"Windows-1251", "\xC8\xE2\xE0\xED", "Иван"},
    {"windows-1253", "\xCD\xDF\xEA\xEF\xF2", "Νίκος"},
    {"windows-1254", "I\xFE\xFDk", "Işık"},
    {"windows-1255", "\xE3\xE5\xE3", "דוד"},
    {"windows-1256", "\xE3\xCD\xE3\xCF", "محمد"},
    {"windows-1257", "J\xE2nis", "Jānis"},
    {"Shift_JIS",
     "\x8ER\x93"
     "c\x83\\\x94\\\x95\\ \xB1\xB2\xB3",
     "山田ソ能表 ｱｲｳ"},
    {"x-sjis",
     "\x8ER\x93"
     "c",
     "山田"},
    {"windows-31j", "\xEE\xE0\x8B\xB4", "髙橋"},
    {"EUC-JP", "\xBB\xB3\xC5\xC4\xC2\xC0\xCF\xBA \x8E\xB1\x8E\xB2\x8E\xB3", "山田太郎 ｱｲｳ"},
    {"ISO-2022-JP", "\x1B$B;3ED\x1B(B Taro", "山田 Taro"},
    {"GB2312", "\xD5\xC5\xCE\xB0", "张伟"},
    {"GBK", "\x8F\x88\x82\xA5", "張偉"},
    {"gb18030", "\xD5\xC5\xCE\xB0", "张伟"},
    {"Big5", "\xA4\xFD\xA4p\xA9\xFA\xA5\\", "王小明功"},
    {"EUC-KR", "\xB1\xE8\xC3\xB6\xBC\xF6", "김철수"},
    {"ks_c_5601-1987", "\xB1\xE8\xC3\xB6\xBC\xF6", "김철수"},
    {"KOI8-R", "\xE9\xD7\xC1\xCE", "Иван"},
    {"KOI8-U", "\xB7\xD6\xC1\xCB", "Їжак"},
    {"TIS-620", "\xCA\xC1\xAA\xD2\xC2", "สมชาย"},
    {"IBM850", "M\x81ller", "Müller"},
    {"cp866", "\x88\xA2\xA0\xAD", "Иван"},
    {"macintosh", "M\x9Fller", "Müller"},
};

TEST(Charsets, EveryLabelIsRead) {
    for (const Labelled& c : labelledTexts) {
        SCOPED_TRACE(c.label);
        const std::optional<UINT> codePage = CodePageOfCharset(c.label);
        ASSERT_TRUE(codePage);
        std::string utf8;
        EXPECT_TRUE(AppendAsUtf8(c.bytes, *codePage, utf8));
        EXPECT_EQ(utf8, c.utf8);
    }
    EXPECT_FALSE(CodePageOfCharset("klingon"));
    EXPECT_FALSE(CodePageOfCharset(""));
}

TEST(Charsets, WhatIsNoTextOfItsCharsetIsSaidAndRepaired) {
    for (const UINT codePage : {932U, 936U, 949U, 950U, static_cast<UINT>(CP_UTF8)}) {
        std::string utf8 = "kept";
        EXPECT_FALSE(AppendAsUtf8("A\xE9", codePage, utf8)) << codePage;
        EXPECT_EQ(utf8, "kept");
        AppendRepaired("A\xE9", codePage, utf8);
        EXPECT_TRUE(utf8.starts_with("keptA") && utf8.size() > 5 && IsUtf8(utf8)) << codePage << utf8;
    }
}

struct Unlabelled {
    UINT codePage;
    const char* bytes;
};

constexpr Unlabelled unlabelledTexts[] = {
    {1252, "M\xFCller"},             // Müller
    {1252, "J\xF6rg Wei\xDF GmbH"},  // Jörg Weiß GmbH
    {1252,
     "Jos\xE9 Pe\xF1"
     "a"},                              // José Peña
    {1252, "H\xE9l\xE8ne Lef\xE8vre"},  // Hélène Lefèvre
    {1252, "Jo\xE3o Concei\xE7\xE3o"},  // João Conceição
    {1252, "S\xF8ren Kj\xE6r"},         // Søren Kjær
    {1252,
     "\xC5sa \xD6"
     "berg"},              // Åsa Öberg
    {1252, "Niccol\xF2"},  // Niccolò
    {1252,
     "G\xFCnther B\xE4"
     "cker & S\xF6hne\nB\xFCro f\xFCr St\xE4"
     "dtebau"},                                 // Günther Bäcker & Söhne / Büro für Städtebau
    {1250, "\xA3ukasz W\xF3jcik"},              // Łukasz Wójcik
    {1250, "Dvo\xF8\xE1k"},                     // Dvořák
    {1250, "Ji\xF8\xED R\xF9\x9Ei\xE8ka"},      // Jiří Růžička
    {1250, "\xAF\xF3\xB3\xE6 i Sp\xF3\xB3ka"},  // Żółć i Spółka
    {1250,
     "Kov\xE1"
     "cs Istv\xE1n Zs\xF3"
     "fia Erd\xF5s T\xFBz\xE9p"},            // Kovács István Zsófia Erdős Tűzép
    {1250, "Ma\xB3gorzata Kaczy\xF1ska"},    // Małgorzata Kaczyńska
    {1254, "I\xFE\xFDl Y\xFDld\xFDz"},       // Işıl Yıldız
    {1254, "\xDE\xFCkr\xFC \xD6\xF0\xFCt"},  // Şükrü Öğüt
    {1254,
     "Ay\xFE"
     "e G\xFClbahar \xC7"
     "a\xF0lar"},                            // Ayşe Gülbahar Çağlar
    {1257, "J\xE2nis B\xE7rzi\xF2\xF0"},     // Jānis Bērziņš
    {1257, "\xDEydr\xFBnas Jonaitien\xEB"},  // Žydrūnas Jonaitienė
    {1257,
     "Ieva Kalni\xF2"
     "a, J\xFBrmala"},                                    // Ieva Kalniņa, Jūrmala
    {1251, "\xC8\xE2\xE0\xED \xCF\xE5\xF2\xF0\xEE\xE2"},  // Иван Петров
    {1251, "\xCE\xCE\xCE \xD0\xEE\xEC\xE0\xF8\xEA\xE0"},  // ООО Ромашка
    {1251,
     "\xCE\xEB\xFC\xE3\xE0 \xD1\xE5\xF0\xE3\xE5\xE5\xE2\xED\xE0 \xCA\xF3\xE7\xED\xE5\xF6\xEE\xE2\xE0"},  // Ольга
                                                                                                         // Сергеевна
                                                                                                         // Кузнецова
    {1251, "\xE8\xE2\xE0\xED\xEE\xE2"},                                               // иванов
    {1251, "\xCE\xEB\xE5\xEA\xF1\xE0\xED\xE4\xF0 \xD8\xE5\xE2\xF7\xE5\xED\xEA\xEE"},  // Олександр Шевченко
    {20866, "\xE9\xD7\xC1\xCE \xF0\xC5\xD4\xD2\xCF\xD7"},                             // Иван Петров
    {20866, "\xEF\xEF\xEF \xF2\xCF\xCD\xC1\xDB\xCB\xC1"},                             // ООО Ромашка
    {20866,
     "\xEF\xCC\xD8\xC7\xC1 \xF3\xC5\xD2\xC7\xC5\xC5\xD7\xCE\xC1 \xEB\xD5\xDA\xCE\xC5\xC3\xCF\xD7\xC1"},  // Ольга
                                                                                                         // Сергеевна
                                                                                                         // Кузнецова
    {866, "\x88\xA2\xA0\xAD \x8F\xA5\xE2\xE0\xAE\xA2"},                  // Иван Петров
    {866, "\x8E\xAB\xEC\xA3\xA0 \x8A\xE3\xA7\xAD\xA5\xE6\xAE\xA2\xA0"},  // Ольга Кузнецова
    {1253, "\xC3\xE9\xFE\xF1\xE3\xEF\xF2 \xD0\xE1\xF0\xE1\xE4\xFC\xF0\xEF\xF5\xEB\xEF\xF2"},  // Γιώργος Παπαδόπουλος
    {1253, "\xC5\xEB\xDD\xED\xE7"},                                                           // Ελένη
    {1253, "\xCD\xDF\xEA\xEF\xF2 \xCA\xE1\xE6\xE1\xED\xF4\xE6\xDC\xEA\xE7\xF2"},   // Νίκος Καζαντζάκης
    {1255, "\xE3\xE5\xE3 \xEB\xE4\xEF"},                                           // דוד כהן
    {1255, "\xEE\xF9\xE4 \xEC\xE5\xE9 \xE1\xF2\"\xEE"},                            // משה לוי בע"מ
    {1255, "\xF8\xE7\xEC \xE0\xE1\xF8\xE4\xED"},                                   // רחל אברהם
    {1256, "\xE3\xCD\xE3\xCF \xDA\xE1\xED"},                                       // محمد علي
    {1256, "\xD4\xD1\xDF\xC9 \xC7\xE1\xE4\xE6\xD1 \xE1\xE1\xCA\xCC\xC7\xD1\xC9"},  // شركة النور للتجارة
    {1256, "\xDA\xC8\xCF \xC7\xE1\xE1\xE5"},                                       // عبد الله
    {874, "\xCA\xC1\xAA\xD2\xC2 \xE3\xA8\xB4\xD5"},                                // สมชาย ใจดี
    {874, "\xBA\xC3\xD4\xC9\xD1\xB7 \xE4\xB7\xC2 \xA8\xD3\xA1\xD1\xB4"},  // บริษัท ไทย จำกัด
    {874, "\xC7\xD4\xE4\xC5\xC7\xC3\xC3\xB3"},                            // วิไลวรรณ
    {932,
     "\x8ER\x93"
     "c\x91\xBE\x98Y"},                                                   // 山田太郎
    {932, "\x8A\x94\x8E\xAE\x89\xEF\x8E\xD0\x83T\x83\x93\x83v\x83\x8B"},  // 株式会社サンプル
    {932,
     "\x93"
     "c\x92\x86 \x89\xD4\x8Eq\n\x89"
     "c\x8B\xC6\x95\x94"},                                                        // 田中 花子 / 営業部
    {932, "\x8D\xB2\x93\xA1"},                                                    // 佐藤
    {932, "\x83\x84\x83}\x83_"},                                                  // ヤマダ
    {20932, "\xBB\xB3\xC5\xC4\xC2\xC0\xCF\xBA"},                                  // 山田太郎
    {20932, "\xB3\xF4\xBC\xB0\xB2\xF1\xBC\xD2\xA5\xB5\xA5\xF3\xA5\xD7\xA5\xEB"},  // 株式会社サンプル
    {20932, "\xC5\xC4\xC3\xE6 \xB2\xD6\xBB\xD2\n\xB1\xC4\xB6\xC8\xC9\xF4"},       // 田中 花子 / 営業部
    {20932, "\xCE\xEB\xCC\xDA\xB0\xEC\xCF\xBA"},                                  // 鈴木一郎
    {936, "\xD5\xC5\xCE\xB0"},                                                    // 张伟
    {936, "\xB1\xB1\xBE\xA9\xBF\xC6\xBC\xBC\xD3\xD0\xCF\xDE\xB9\xAB\xCB\xBE"},    // 北京科技有限公司
    {936, "\xCD\xF5\xD0\xA1\xC3\xF7\n\xCF\xFA\xCA\xDB\xB2\xBF"},                  // 王小明 / 销售部
    {936, "\xC0\xEE\xC4\xC8"},                                                    // 李娜
    {950, "\xA4\xFD\xA4p\xA9\xFA"},                                               // 王小明
    {950, "\xA5x\xA5_\xAC\xEC\xA7\xDE\xA6\xB3\xAD\xAD\xA4\xBD\xA5q"},             // 台北科技有限公司
    {950,
     "\xB3\xAF\xAC\xFC\xB4"
     "f\n\xB7~\xB0\xC8\xB3\xA1"},                                                // 陳美惠 / 業務部
    {949, "\xB1\xE8\xC3\xB6\xBC\xF6"},                                           // 김철수
    {949, "\xC1\xD6\xBD\xC4\xC8\xB8\xBB\xE7 \xC7\xD1\xB1\xB9\xB9\xAB\xBF\xAA"},  // 주식회사 한국무역
    {949, "\xC0\xCC\xBF\xB5\xC8\xF1\n\xBF\xB5\xBE\xF7\xBA\xCE"},                 // 이영희 / 영업부
    {949, "\xB9\xDA\xC1\xF6\xB9\xCE"},                                           // 박지민
    {850, "J\x94rg M\x81ller"},                                                  // Jörg Müller
    {850,
     "G\x81nther B\x84"
     "cker"},  // Günther Bäcker
};

TEST(Charsets, NamesAreEnoughToGuess) {
    for (const Unlabelled& c : unlabelledTexts) {
        for (const UINT likely : {1252U, 932U}) {
            // The system's own code page may tip the balance, never turn it.
            EXPECT_EQ(GuessCodePage(c.bytes, likely), c.codePage) << c.bytes << " likely " << likely;
        }
    }
    EXPECT_EQ(GuessCodePage("\x1B$B;3ED\x1B(B", 1252), codePageIso2022Jp);
}

TEST(Charsets, AnyBytesAreGuessedAndRead) {
    std::minstd_rand random(1);
    for (int round = 0; round < 200; ++round) {
        std::string bytes(random() % 300, '\0');
        for (char& byte : bytes) byte = static_cast<char>(random());
        std::string utf8;
        AppendRepaired(bytes, GuessCodePage(bytes, GetACP()), utf8);
        EXPECT_TRUE(IsUtf8(utf8));
    }
}

}  // namespace
