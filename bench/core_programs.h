#pragma once

#include <string_view>

namespace bench {

// The longest delay that the Delay Designer writes, 129 seconds on the real chip: 66 million instructions.
inline constexpr std::u16string_view DelayLoop =
    u" mvi b,FF\r\n"
    u"dd_2:\r\n lxi d,FD59\r\n"
    u"dd_1:\r\n dcx d\r\n mov a,e\r\n ora d\r\n jnz dd_1\r\n"
    u" dcr b\r\n jnz dd_2\r\n";

// 1024 times: fills 64 bytes with changing numbers, sorts them, sums them, and multiplies them in pairs.
inline constexpr std::u16string_view MixedProgram =
    u" lxi b,0400\r\n"
    u"pass:\r\n push b\r\n call fill\r\n call sort\r\n call sum\r\n call multiply\r\n"
    u" pop b\r\n dcx b\r\n mov a,b\r\n ora c\r\n jnz pass\r\n hlt\r\n"

    // each byte is five times the one before, plus 3D
    u"fill:\r\n lxi h,9000\r\n mvi b,40\r\n mov a,c\r\n"
    u"fill1:\r\n mov m,a\r\n mov d,a\r\n add a\r\n add a\r\n add d\r\n adi 3D\r\n inx h\r\n dcr b\r\n jnz fill1\r\n"
    u" ret\r\n"

    // bubble sort
    u"sort:\r\n mvi c,3F\r\n"
    u"sort1:\r\n lxi h,9000\r\n mov b,c\r\n"
    u"sort2:\r\n mov a,m\r\n inx h\r\n cmp m\r\n jc sort3\r\n"
    u" mov d,m\r\n mov m,a\r\n dcx h\r\n mov m,d\r\n inx h\r\n"
    u"sort3:\r\n dcr b\r\n jnz sort2\r\n dcr c\r\n jnz sort1\r\n ret\r\n"

    // 16-bit sum to 9100
    u"sum:\r\n lxi h,0\r\n lxi d,9000\r\n mvi c,40\r\n"
    u"sum1:\r\n push d\r\n ldax d\r\n mov e,a\r\n mvi d,0\r\n dad d\r\n pop d\r\n inx d\r\n dcr c\r\n jnz sum1\r\n"
    u" shld 9100\r\n ret\r\n"

    // the products of the 32 pairs to 9102, one over the other
    u"multiply:\r\n lxi h,9000\r\n mvi b,20\r\n"
    u"next:\r\n push b\r\n push h\r\n mov e,m\r\n inx h\r\n mov c,m\r\n call product\r\n shld 9102\r\n"
    u" pop h\r\n inx h\r\n inx h\r\n pop b\r\n dcr b\r\n jnz next\r\n ret\r\n"

    // HL = C times E by shift and add
    u"product:\r\n lxi h,0\r\n mvi d,0\r\n mvi b,8\r\n"
    u"bit:\r\n mov a,c\r\n rar\r\n mov c,a\r\n jnc shift\r\n dad d\r\n"
    u"shift:\r\n xchg\r\n dad h\r\n xchg\r\n dcr b\r\n jnz bit\r\n ret\r\n";

}  // namespace bench
