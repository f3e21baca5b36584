#include "conversion/conversion.h"

#include <algorithm>

#include "machine/text.h"
#include "support/test_rig.h"

namespace {

using conversion::Conversion;
using Text = std::u16string;
using m8085::Wide;
using support::Narrow;

// Converts, and sees that each line that was changed is named, and that another conversion changes nothing.
Conversion Convert(std::string_view source, bool allDecimal = false) {
    const Text text = Wide(source);
    Conversion conversion = conversion::ConvertProgram(text, allDecimal);
    const auto before = m8085::LinesOf(text);
    const auto after = m8085::LinesOf(conversion.Program);
    EXPECT_EQ(before.size(), after.size()) << source;
    for (std::size_t line = 0; line < std::min(before.size(), after.size()); ++line) {
        const auto named = std::ranges::count(conversion.Notes, static_cast<int>(line + 1), &conversion::Note::Line);
        EXPECT_TRUE(named > 0 || before[line] == after[line]) << source;
    }
    EXPECT_EQ(Narrow(conversion::ConvertProgram(conversion.Program, allDecimal).Program), Narrow(conversion.Program));
    return conversion;
}

std::string NotesOf(const Conversion& conversion) {
    std::string text;
    for (const auto& [line, isFault, note] : conversion.Notes)
        text += (isFault ? "!" : "") + std::to_string(line) + ' ' + Narrow(note) + '\n';
    return text;
}

using Rows = std::initializer_list<std::pair<const char*, const char*>>;

// With a last line that keeps the program from assembling as it is.
void ExpectConverted(Rows rows, bool allDecimal = false) {
    for (const auto& [source, result] : rows)
        EXPECT_EQ(Narrow(Convert(source + std::string("\nend"), allDecimal).Program), result + std::string("\n; end"));
}

// Each program has a fault in its last line, which stays as it is.
void ExpectFaults(Rows rows) {
    for (const auto& [source, fault] : rows) {
        const Conversion conversion = Convert(source);
        const Text text = Wide(source);
        const auto lines = m8085::LinesOf(text);
        const std::string place = "!" + std::to_string(lines.size()) + ' ';
        EXPECT_NE(NotesOf(conversion).find(place + fault), std::string::npos) << NotesOf(conversion);
        EXPECT_TRUE(conversion.Program.ends_with(lines.back())) << Narrow(conversion.Program);
    }
}

TEST(Conversion, CommentsNeitherStickNorBreakTheirLines) {
    ExpectConverted({
        {"hlt;end", "hlt ;end"},
        {"inr c ; it: a:b : c:", "inr c ; it - a-b - c:"},
        {"hlt // the: end", "hlt ; the - end"},
        {"x: nop /* a */ \t// b", "x: nop   \t; a ; b"},
        {"nop /* a\r\n\tb: c */hlt", "nop ; a\r\nhlt ;\tb - c "},
        {"nop\r\n; a: /* b */\r\nhlt", "nop\r\n; a - /* b */\r\nhlt"},
        {"cpi ';';x", "cpi 3BH ;x"},
        {"mov a,b copies it: so", "mov a,b ; copies it - so"},
        {"hlt ends here ; so", "hlt ; ends here ; so"},
        {"lda 9000h - load\nadi 1 / add one\nmov a,b | so\nnop # +1\nADD B  Add B to A\nINR A 3C so",
         "lda 9000h ; - load\nadi 1 ; / add one\nmov a,b ; | so\nnop ; # +1\nADD B  ; Add B to A\nINR A ; 3C so"},
        {"n equ 3\nmvi a,9 - n\nadi 9 - f", "; n equ 3\nmvi a,06\nadi 9 ; - f"},
        {"mvi a,5 -- so\n----\nmov a,b # so\nhlt : so", "mvi a,5 ; -- so\n; ----\nmov a,b ; # so\nhlt ; - so"},
    });
}

TEST(Conversion, NumbersAreBroughtToHexadecimal) {
    ExpectConverted({
        {"mvi a,0100", "mvi a,64H"},
        {"mvi a,200d\nlxi h,65535", "mvi a,0C8H\nlxi h,0FFFFH"},
        {"mvi a,00001010b\nadi 1010B", "mvi a,0AH\nadi 0AH"},
        {"mvi a,10d\nadi 5d\nlda 205d\nmvi a,10b\nadi 111b\nadi 1b",
         "mvi a,0AH\nadi 05H\nlda 205d\nmvi a,02H\nadi 07H\nadi 01H"},
        {"mvi a,17q\nori 17O\nadi 0b101\nlxi h,0b00001111", "mvi a,0FH\nori 0FH\nadi 05H\nlxi h,000FH"},
        {"mvi a,0x1f\nlxi h,$1F\nlda &h9000", "mvi a,1FH\nlxi h,001FH\nlda 9000H"},
        {"mvi a,#5\nadi #05h", "mvi a,05H\nadi 05H"},
        {"mvi a,05 H\nlxi h,2050 h", "mvi a,05H\nlxi h,2050H"},
        {"mvi a,'a'\ncpi \"A\"", "mvi a,61H\ncpi 41H"},
        {"mvi a,-1\nlxi h,0-2\nsui 5+3-1", "mvi a,0FFH\nlxi h,0FFFEH\nsui 07H"},
        {"n equ 4\nmvi a,n*3+(1 shl 3)\nori not 0FH\nani n or 11h\nout (10h)",
         "; n equ 4\nmvi a,14\nori 0F0\nani 15\nout 10"},
        {"mvi b,high 2051h\nmvi c,low(l+1)\nl:\nadi 9/2", "mvi b,20H\nmvi c,05H\nl:\nadi 04H"},
        {"mvi a,10\nadi 1b\nadi 5D\nlda 2050", "mvi a,10\nadi 1b\nadi 5D\nlda 2050"},
        {"x equ 0A0\nmvi a,x\nlda 0C050\nsta buf\nbuf:", "; x equ 0A0\nmvi a,0A0\nlda 0C050\nsta 8008\nbuf:"},
    });
    ExpectConverted({{"mvi a,10\nadi 1b\nadi 5D\nlda 2050", "mvi a,0AH\nadi 01H\nadi 05H\nlda 0802H"},
                     {"mvi a,9\nadi 0AH\nadi 0FF", "mvi a,9\nadi 0AH\nadi 0FF"}},
                    true);
    EXPECT_EQ(NotesOf(Convert("mvi b,10\nmvi a,100\nlda 2050\nadi 9\nout 5D")),
              "1 10 is taken as hexadecimal\n2 100 became 64H\n3 2050 is taken as hexadecimal\n5 5D is taken as "
              "hexadecimal\n");
    EXPECT_EQ(NotesOf(Convert("mvi a,0AH\nadi 10")), "2 10 is hexadecimal too, though line 1 has 0AH\n");
    EXPECT_EQ(NotesOf(Convert("nop\nds 12")),
              "2 DS is a comment now, for 18 bytes at 8001\n2 12 is taken as hexadecimal\n");
}

TEST(Conversion, DirectivesBecomeComments) {
    ExpectConverted({
        {"\tcpu \"8085.tbl\"\nhof 'x:y'\n.title a\n.sbttl b\nhlt",
         "\t; cpu \"8085.tbl\"\n; hof 'x-y'\n; .title a\n; .sbttl b\nhlt"},
        {"a:.org 8000h\nhlt", "a: ; .org 8000h\nhlt"},
        {"hlt\nend\nnop: it\n\nnop", "hlt\n; end\n; nop - it\n\n; nop"},
        {"jz end\nnop\nend\nhlt", "jz end\nnop\nend:\nhlt"},
        {"begin: nop\nend begin", "begin: nop\n; end begin"},
    });
    EXPECT_EQ(NotesOf(Convert("# ORG 2000H\n#BEGIN 2000H\nnop\norg 3000h\nhlt\nend")),
              "1 #ORG is a comment now; the program goes on at 8000, not at 2000\n2 #BEGIN is a comment now\n"
              "4 ORG is a comment now; the program goes on at 8001, not at 3000\n6 END is a comment now\n");
    for (const char* source : {"nop\nx: hlt\nend x", "#BEGIN 2000\n#ORG 2000\nnop\n#BEGIN 2001\nhlt",
                               "#ORG 2000\n#BEGIN 2001\nnop\nhlt", "hlt\nend nowhere", "org 9\nret\norg 3\nhlt"})
        EXPECT_NE(NotesOf(Convert(source)).find(", and begins with its first instruction now"), std::string::npos);
}

TEST(Conversion, NamesBecomeTheNumbersThatTheyStandFor) {
    ExpectConverted({
        {"n equ 5\nm = n+1\nk: set 0ffh\nmvi a,n\nadi M\ncpi k-m",
         "; n equ 5\n; m = n+1\n; k  set 0ffh\nmvi a,05H\nadi 06H\ncpi 0F9H"},
        {"mvi a,n\nn equ m\nm=3", "mvi a,03\n; n equ m\n; m=3"},
        {"lxi h,l\nl: lxi d,$\nl2 equ $\nlxi b,l2-l", "lxi h,8003H\nl: lxi d,8003H\n; l2 equ $\nlxi b,0003H"},
        {"org 2000\nlxi h,l\nl: hlt", "; org 2000\nlxi h,8003\nl: hlt"},
        {".equ n, 6\nset m,1\nmvi a,n+m", "; .equ n, 6\n; set m,1\nmvi a,07"},
        {"n equ 100\nmvi a,n", "; n equ 100\nmvi a,64H"},
    });
    ExpectFaults({
        {"x equ 1\nx equ 2", "X has more than one value"},
        {"nop\nx equ y", "what follows EQU cannot be read"},
        {"y: nop\nmvi a,y", "Bad operand (a label is not a number"},
        {"jmp l\ntab: db 1,2,3\nl: lxi h,l-tab", "Bad operand (L-TAB is not a number"},
    });
    EXPECT_EQ(NotesOf(Convert("x equ x+x\nmvi a,x")).find("!1 what follows EQU cannot be read"), 0U);
}

TEST(Conversion, DataGoToAFile) {
    const auto expectData = [](std::string_view source, const char* result, const char* data) {
        const Conversion conversion = Convert(source);
        EXPECT_EQ(Narrow(conversion.Program), result);
        EXPECT_EQ(conversion.Data, data) << source;
    };
    expectData("lxi h,list\nhlt\nlist: db 1,'A',\"b;\",10H+1 ; all\n.dw list,1234h\nk equ 5\n",
               "lxi h,8004H\nhlt\n; list  db 1,'A',\"b;\",10H+1 ; all\n; .dw list,1234h\n; k equ 5\n",
               "8004 : 01 41 62 3B 11 04 80 34 12\r\n");
    // What the program needs the room of moves as a whole, past what else is used.
    expectData(
        "jmp go\nlist: db 1,2\nbuf ds 2\nlast: defb -1\ngo: lda last\nsta 8100\nlxi b,last-list\norg 8180\ndb 7",
        "jmp go\n; list  db 1,2\n; buf ds 2\n; last  defb -1\ngo: lda 8204\nsta 8100\nlxi b,0004\n; org 8180\n; db 7",
        "8180 : 07\r\n8200 : 01 02\r\n8204 : FF\r\n");
    expectData("2000 lda 2100h\nhlt\n2100 l: db 5", "2000: lda 2100h\nhlt\n; 2100;l  db 5", "2100 : 05\r\n");
    expectData("lda title\nhlt\ntitle db 5", "lda 8004\nhlt\n; title db 5", "8004 : 05\r\n");
    expectData("org 9000\nres:\norg 2000h\nsta res\nlda n\nhlt\nn: db 17h dup\nlxi h,n",
               "; org 9000\n; res \n; org 2000h\nsta 9000H\nlda 2007H\nhlt\nn: db 17h dup\nlxi h,2007H", "");
    expectData("db 0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0\norg 0ffffh\ndb 1,2",
               "; db 0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0\n; org 0ffffh\n; db 1,2",
               "0000 : 02\r\n8000 : 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00\r\n8010 : 00\r\nFFFF : 01\r\n");
    ExpectFaults({
        {"nop\ndb 1,n", "what follows DB cannot be read; it belongs to 8001"},
        {"nop\ndb 'é'", "what follows DB cannot be read"},
        {"nop\n)x: db 1", ")X is not a name"},
        {"nop\ndb 1 2", "what follows DB cannot be read"},
        {"hlt\norg n\ndb 1", "where in memory this belongs is not known"},
    });
    // A run and a subroutine would find an instruction in the place of the data.
    const std::pair<const char*, const char*> notes[] = {
        {"call x\nk equ 1\ndb 'A'\nhlt\nx: ret", "!3 the instruction before goes on into these bytes"},
        {"jmp x\ndb 1\ndb 2\nx: hlt", ""},
        {"org 2000\nlda x\nhlt\nx equ $\ndb 5", ""},
        {"jmp x\nnop\nx: hlt\nend X", ""},
        {"org 2000\nlxi sp,8000\nhlt", ""},
        {"org 2000\nhlt\nlxi sp,8004", "!3 8003 lies inside the program"},
        {"nop\norg 9000\ndb 1\norg 0A000\nhlt", ""},
        {"ei\ndb 1", "!1 Bad opcode - EI"},
        {"org 2000\nlda x\nhlt\nx: dw x,8001", "!4 8001 lies inside the program"},
        {"org 2000\nlda x\nhlt\nx: dw 2001", "\n4 2001 lies inside the program"},
        {"org 2000\nhlt\ndb 'a\\n'", "\n3 each \\ in 'a\\n' is a byte"},
    };
    for (const auto& [source, note] : notes) {
        const std::string all = NotesOf(Convert(source));
        EXPECT_NE(all.find(note), std::string::npos) << all;
        EXPECT_EQ(std::ranges::count(all, '!'), *note == '!') << all;
    }
}

TEST(Conversion, JumpsGetLabels) {
    ExpectConverted({
        {"org 2000h\n  mvi a,1\njmp 2000h\njz 2002\ncall $-6",
         "; org 2000h\n  L2000: mvi a,1\nL2002: jmp L2000\njz L2002\ncall L2002"},
        {"a1: a2:\n; so\nnop\njmp 8000", "a1: a2:\n; so\nnop\njmp A1"},
        {"sub1 equ 8003\ncall sub1\nret", "; sub1 equ 8003\ncall L8003\nL8003: ret"},
        {"#BEGIN 2000\nnop\njmp 2000", "; #BEGIN 2000\nL2000: nop\njmp L2000"},
        {"lx: mvi a,0L8000\njmp 8002\nnop", "lx: mvi a,0L8000\nL8002: jmp L8002\nnop"},
        {"8000: nop\njmp 8000\njmp 8000:", "8000: nop\njmp 8000\njmp 8000"},
        {"2000: 3E 05 mvi a,5\n\t2002 3C l: inr a;x\n2003\tC3 jmp 2002 on\n2004 02\n2005 20\n2006 77 hlt",
         "mvi a,5 ; 2000 3E 05\nl: inr a ; 2002 3C ;x\njmp L ; on ; 2003\tC3\n; 2004 02\n; 2005 20\n2006 77 hlt"},
        {"2000 mvi a,1\n2002: l: dcr a\n2003 a: jz 2002h\n2006 jmp 2003h\n2009 hlt",
         "2000: mvi a,1\n2002: l: dcr a\n2003: a: jz 2002\n2006: jmp 2003\n2009: hlt"},
        {"1 ; so\n2 2000 org 2000h\n3. 2000 3C inr a\n4) hlt",
         "; 1 ; so\n2000: ; org 2000h ; 2\ninr a ; 2000 3C ; 3.\nhlt ; 4)"},
        {"1 inr a\n2 jmp 1", "1: inr a\n2: jmp 1"},
        {"4100 FB EI\n4101 00 NOP\n4102 EF RST 5", "EI ; 4100 FB\nNOP ; 4101 00\nHLT ; 4102 EF"},
        {"loop dcr b\nnext\njnz loop\njz next\nlst : ret\njz lst",
         "loop: dcr b\nnext:\njnz loop\njz next\nlst:  ret\njz lst"},
    });
    ExpectFaults({
        {"org 9\nio:\norg 2000\nnop\njmp io", "no instruction is known to begin at 0009"},
        {"nop\nwhat 5,6\nret\njmp 8001", "no instruction is known to begin at 8001"},
        {"; org 2000\njmp 8000", "no instruction is known to begin at 8000"},
    });
}

TEST(Conversion, ProseIsTakenForACommentAndASlipIsNot) {
    ExpectConverted({
        {"Addition of 2 bytes\nAim: to add, and so on\nDate : 1-2-3 \nName: R. Rao\n1. Start\n\n"
         "PROGRAM\nProgram A\nSheet 12\naim: lda aim\nhlt\nThe result stands in A\n",
         "; Addition of 2 bytes\n; Aim - to add, and so on\n; Date - 1-2-3 \n; Name - R. Rao\n; 1. Start\n\n"
         "; PROGRAM\n; Program A\n; Sheet 12\naim: lda 8000H\nhlt\n; The result stands in A\n"},
        {"ADD TWO NUMBERS\norg 8000\nFirst part\nnop\n", "; ADD TWO NUMBERS\n; org 8000\n; First part\nnop\n"},
        {"miv a,05 load a\nPUSHH B\ncall delay now\nadd b\n", "miv a,05 load a\nPUSHH B\ncall delay ; now\nadd b\n"},
        {"nop\nIt is in A now\nhlt", "nop\nIt is in A now\nhlt"},
        {"begin\nmvi b,5\njnz begin\nsub b\nhlt", "begin:\nmvi b,5\njnz begin\nsub b\nhlt"},
        {"rst 1 ; monitor\n\n rst 5", "rst 1 ; monitor\n\n hlt"},
        {"nop\nRST 1 ; monitor", "nop\nHLT ; monitor"},
        {"ei\nrst 7\nrim\nrst 1,", "ei\nrst 7\nrim\nrst 1,"},
    });
    ExpectFaults({
        {"mov a,b add c", "add c does not belong to MOV"},
        {"ei\ninr a,b", ",b does not belong to INR"},
        {"lxi h,9000+1 or so", "Bad opcode - OR"},
        {"ei\nmvi a,3 eq 4", "eq 4 does not belong to MVI"},
        {"ei\nmvi a,2+3*4", "Bad operand (2+3*4 is not a number"},
        {"ei\nmvi a,10/5", "Bad operand (10/5 is not a number"},
        {"ei\nmvi a,(12", "Bad operand ((12 is not a number"},
        {"ei\nmvi a,low x", "Bad opcode - X"},
        {"mvi b,c\nmvi a,10 d", "d does not belong to MVI"},
        {"jmp x\ndb 1\nx: lxi h,x-1", "what stood at x-1 stands elsewhere now"},
        {"org 9\nnop\nx equ $\norg 99\nret\nsta x", "what stood at x stands elsewhere now"},
        {"mvi a,0 5", "5 does not belong to MVI"},
        {"hlt\n1) mvi a,5", "Bad opcode - 1)"},
        {"hlt\nradix 10", "Bad opcode - RADIX"},
        {"hlt\nreturn", "Bad operand"},
        {"hlt\n#define ff 5", "Bad operand"},
        {"ei\nsta 9000h-a", "Bad operand (9000H-A is not a number"},
        {"hlt\nSTORE 9000H", "Bad opcode - STORE"},
        {"hlt\nCLEAR A", "Bad opcode - CLEAR"},
        {"ei\n2000H: sub nop h,", "h, does not belong to SUB"},
        {"x: org dw 5", "Bad opcode - ORG"},
        {"org 2000\nnop\nlda 2000", "2000 lies inside the program"},
        {"org 2000\nnop\nlxi h,8000", "8000 lies inside the program"},
    });
    EXPECT_EQ(NotesOf(Convert("org 0\nlxi b,2\nhlt")).find("!"), std::string::npos);
}

TEST(Conversion, WhatAssemblesWithoutAWarningStaysAsItIs) {
    for (const char* source : {"MVI A,10\r\nADI 1B\r\nHLT stop ; a:\r\n", "a: b: hlt", "lda 8000", ""}) {
        const Conversion conversion = Convert(source);
        EXPECT_EQ(Narrow(conversion.Program), source);
        EXPECT_TRUE(conversion.Notes.empty() && conversion.Data.empty());
    }
    EXPECT_EQ(NotesOf(Convert("l: nop\nl: nop")),
              "2 the label L is defined in line 1 already, and jumps and calls go there\n");
}

TEST(Conversion, WhatOtherAssemblersAndListsWriteComesOverWholeOrStays) {
    ExpectConverted({
        {"* COMMENT LINE\n\tLXI H,10\n\tHLT\n\tORG 3000H\nX\tDB 100",
         "; * COMMENT LINE\n\tLXI H,10\n\tHLT\n\t; ORG 3000H\n; X\tDB 100"},
        {"\tLDA Q\n\tHLT\nQ:\tDB ''''", "\tLDA 8004H\n\tHLT\nQ:\tDB ''''"},
        {"DEBUG EQU 0\nIF DEBUG\nMVI A,1\nENDIF\nHLT", "; DEBUG EQU 0\nIF DEBUG\nMVI A,1\nENDIF\nHLT"},
        {"N\tEQU 4\n\tORG 3000H\nB1:\tDS N*2\nB2:\tDB 5\n\tORG 2000H\n\tLDA B2\n\tHLT",
         "; N\tEQU 4\n\t; ORG 3000H\n; B1 \tDS N*2\n; B2 \tDB 5\n\t; ORG 2000H\n\tLDA 3008H\n\tHLT"},
        {"3E 05\n76", "3E 05\n76"},
        {"MVI A,05H\t<- load\nHLT", "MVI A,05H\t; <- load\nHLT"},
        {"```asm\nMVI A,3\nHLT\n```", "; ```asm\nMVI A,3\nHLT\n; ```"},
        {"* = 2000H\nMVI A,05H\nHLT", "; * = 2000H\nMVI A,05H\nHLT"},
        {"\tMVI /* load */ A,7\n\tHLT", "\tMVI   A,7 ; load \n\tHLT"},
        {"ORG 2000H, main\n MVI A,05\n HLT", "ORG 2000H, main\n MVI A,05\n HLT"},
        {"\tORG 0\n\tJMP 100H\n\tORG 8\n\tRET\n\tORG 100H\n\tRST 1\n\tHLT",
         "\t; ORG 0\n\tJMP L0100\n\t; ORG 8\n\tRET\n\t; ORG 100H\n\tL0100: RST 1\n\tHLT"},
        {"\tPUBLIC START\n\tEXTRN  FOO\nSTART:\tMVI A,5\n\tHLT\n\tEND START",
         "\t; PUBLIC START\n\tEXTRN  FOO\nSTART:\tMVI A,5\n\tHLT\n\t; END START"},
        {"BITS    EQU 5\nMASK    EQU (1 SHL BITS) - 1\nMVI A,MASK\nSTA 9000H\nHLT",
         "; BITS    EQU 5\n; MASK    EQU (1 SHL BITS) - 1\nMVI A,1FH\nSTA 9000H\nHLT"},
        {"LDA 9000H   % fetch\nADD A       % times 2\nADD A       % times 4\nSTA 9001H   % store\nHLT",
         "LDA 9000H   ; % fetch\nADD A       ; % times 2\nADD A       ; % times 4\nSTA 9001H   ; % store\nHLT"},
    });
}

}  // namespace
