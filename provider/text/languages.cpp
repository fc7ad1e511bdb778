// One line for each language and code page. A language that two code pages hold stands in both.
#include "text/languages.h"

namespace {

constexpr std::u16string_view german = u"üöäß";
constexpr std::u16string_view french = u"éèêàçëôïîâûùœüÿæ’";
constexpr std::u16string_view spanish = u"íóáéñúüºª";
constexpr std::u16string_view portuguese = u"ãçáéíóõâêúôàº";
constexpr std::u16string_view italian = u"àèòìùé";
constexpr std::u16string_view swedish = u"åäöéü";
constexpr std::u16string_view danish = u"øæåéü";
constexpr std::u16string_view icelandic = u"óíðáúþéöýæ";
constexpr std::u16string_view polish = u"łóńśżąęćź";
constexpr std::u16string_view czech = u"áíěčřšýžůéúťňďóěňĺľôä";
constexpr std::u16string_view hungarian = u"áéóöíőúüű";
constexpr std::u16string_view romanian = u"ăşţâîșț";
constexpr std::u16string_view croatian = u"ćčšžđ";
constexpr std::u16string_view turkish = u"üıöşğçâî";
constexpr std::u16string_view lithuanian = u"ėūščžįąęų";
constexpr std::u16string_view latvian = u"āņīēšūļžķčģ";
constexpr std::u16string_view estonian = u"äõüöšž";
constexpr std::u16string_view russian = u"оаеинтрслвкмдпуягзьбычхйжшюцщэфёъ";
constexpr std::u16string_view ukrainian = u"оаінивертсклупмдйюгязьбчшхцжєїщфґ";
constexpr std::u16string_view greek = u"ασοςιτνλρπκυεμόίάδγύέήθώχβξζφψηωϊϋΐΰ";
constexpr std::u16string_view hebrew = u"ירובלמאהנכתשדקגחפעסטזצםןףךץ";
constexpr std::u16string_view arabic = u"المدرينعبحسوكةشهفصخطتجقزذضئثغىأإآظءؤ،";
constexpr std::u16string_view thai = u"านรัิยกสมวทพงลชปดอ์ีตศคเบ่จุ้ขณธแฐใูไถโำหหะภฉญซื็ฏฎฆฑฒผฝฟฤๅๆึ";
constexpr std::u16string_view japanese =
    u"田山木村中本小川大井藤島野高松林石原上谷佐橋田口下崎西森池清内岡吉金水青河三平岩福長渡辺斎斉伊加鈴近遠坂伊東"
    u"一郎太子美香恵介健之男夫雄明正和弘樹智裕真由紀千佳代優子幸博直哉翔健浩司誠隆司会社株式有限商事工業電気製作所"
    u"産業研究京都府県市区町部課店支本社日本東北海道阪南新神奈名古屋横浜合同団法人営総務開発技術販売";
constexpr std::u16string_view simplifiedChinese =
    u"王李张刘陈杨黄赵吴周徐孙马朱胡郭何高林罗郑梁谢宋唐许韩冯邓曹彭曾肖田董袁潘于蒋蔡余杜叶程苏魏吕丁任沈姚卢姜崔"
    u"伟芳娜秀英敏静丽强磊军洋勇艳杰娟涛明超兰霞平刚桂华建国文志公司有限科技集团北京上海广州深圳中国大学部门销售市场"
    u"贸易电子工业信息技术开发股份责任总经理区省市东南西海天新小红玉梅春晓";
constexpr std::u16string_view traditionalChinese =
    u"王李張劉陳楊黃趙吳周徐孫馬朱胡郭何高林羅鄭梁謝宋唐許韓馮鄧曹彭曾蕭田董袁潘於蔣蔡余杜葉程蘇魏呂丁任沈姚盧姜崔"
    u"偉芳娜秀英敏靜麗強軍洋勇傑娟濤明超蘭霞平剛桂華建國文志公司有限科技集團台北香港臺灣股份大學部門銷售市場業務"
    u"貿易電子工業資訊技術開發責任總經理區省市東南西海天新小紅玉梅春雅淑美惠君宏家豪";
constexpr std::u16string_view korean =
    u"김이박최정강조윤장임한오서신권황안송류전홍고문양손배백허유남심노하곽성차주우구민진지엄채원천방공현함변염여추도소"
    u"석"
    u"선설마길연위표명기반왕금옥육인맹제모영수철희미은경동상준호재태용훈혜숙자순아윤주식회사무역산업전자대한국서울부산"
    u"과장팀영업판매기술개발연구소센터점";

constexpr Language all[] = {
    {1252, Script::Latin, german},
    {1252, Script::Latin, french},
    {1252, Script::Latin, spanish},
    {1252, Script::Latin, portuguese},
    {1252, Script::Latin, italian},
    {1252, Script::Latin, swedish},
    {1252, Script::Latin, danish},
    {1252, Script::Latin, icelandic},
    {1250, Script::Latin, polish},
    {1250, Script::Latin, czech},
    {1250, Script::Latin, hungarian},
    {1250, Script::Latin, romanian},
    {1250, Script::Latin, croatian},
    {1250, Script::Latin, german},
    {1254, Script::Latin, turkish},
    {1257, Script::Latin, lithuanian},
    {1257, Script::Latin, latvian},
    {1257, Script::Latin, estonian},
    {1251, Script::Other, russian},
    {1251, Script::Other, ukrainian},
    {20866, Script::Other, russian},
    {1253, Script::Other, greek},
    {1255, Script::Other, hebrew},
    {1256, Script::Other, arabic},
    {874, Script::Other, thai},
    {932, Script::Han, japanese, true},
    {20932, Script::Han, japanese, true},
    {936, Script::Han, simplifiedChinese},
    {950, Script::Han, traditionalChinese},
    {949, Script::Hangul, korean},
    {28592, Script::Latin, polish},
    {28592, Script::Latin, czech},
    {28592, Script::Latin, hungarian},
    {850, Script::Latin, german},
    {850, Script::Latin, french},
    {850, Script::Latin, spanish},
    {850, Script::Latin, swedish},
    {850, Script::Latin, danish},
    {866, Script::Other, russian},
    {10000, Script::Latin, german},
    {10000, Script::Latin, french},
    {10000, Script::Latin, spanish},
};

}  // namespace

const std::span<const Language> languages = all;
