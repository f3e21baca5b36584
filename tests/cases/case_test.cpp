#include "cases/case.h"

#include <algorithm>
#include <array>
#include <memory>

#include "cases/verdict.h"

namespace {

// What was read, a line for each case and each fault.
std::string Read(std::string_view source) {
    const cases::Cases read = cases::ReadCases(source);
    std::string text;
    for (const cases::Case& each : read.All) {
        text += each.Name + " at " + std::to_string(each.Line) + ':';
        for (const std::string& file : each.DataFiles) text += " load " + file;
        for (const auto& [line, claim] : each.Given) text += " set " + claim.Text();
        for (const auto& [line, claim] : each.Gives) text += " see " + claim.Text() + " of " + std::to_string(line);
        text += '\n';
    }
    for (const cases::Fault& fault : read.Faults) text += std::to_string(fault.Line) + ": " + fault.Text + '\n';
    return text;
}

TEST(Cases, AreReadFromCommentsAndFromLinesWithoutSemicolons) {
    EXPECT_EQ(Read("mvi a,5 ; gives A=05\r\n; GIVES 9000=05, 11,07h, port 10-1F = 0x0,119 T-states\r"
                   ";;given [two  numbers] list.dat,B=1, in.txt\n; Given B=2\ngives T-states <= 200 ; the time\n;gives "
                   "cy=1, F=FF"),
              "case 1 at 1: see A=05 of 1 see 9000=05,11,07h of 2 see port 10-1F = 0x0 of 2 see 119 T-states of 2\n"
              "two  numbers at 3: load list.dat load in.txt set B=1\n"
              "case 3 at 4: set B=2 see T-states <= 200 of 5 see cy=1 of 6 see F=FF of 6\n"
              "3: no gives follows this given: all that is given stands on one line\n");
}

TEST(Cases, ProseIsPassedOverAndWhatLooksLikeAClaimIsNot) {
    EXPECT_EQ(Read("; gives the sum\n; given to you. Use B\n; gives 3 and 4, or 5\n; forgives A=05\n; givenness A=05\n"
                   "; what it gives: A=05\n; given\nlxi h,9000\n"),
              "");
    const std::pair<const char*, const char*> faults[] = {
        {"; gives the sum = A\n", "register"},
        {"; gives 5 T-states or so\n", "T-states are decimal"},
        {"; gives A==05\n", "one = is enough: A=05"},
        {"; gives A=05,CY=2\n", "from 0 to 1"},
        {"; gives list.dat\n", "can only be given"},
        {"; gives A=05 ; the sum\n", "after a value stands a comma, or nothing"},
        {"; gives about 54 T states\n", "T-states are decimal"},
        {"; gives [a] A=05\n", "stands after given"},
        {"; given [a A=05\n; gives A=05", "ends with ]"},
        {"; given 5 T-states\n; gives A=1", "not given"},
        {"; given [a] B=\n; gives A=1", "from 0 to FF"},
        {"; given [a]\n", "no gives follows"},
    };
    for (const auto& [source, fault] : faults) {
        const cases::Cases read = cases::ReadCases(source);
        ASSERT_EQ(read.Faults.size(), 1U) << source;
        EXPECT_EQ(read.Faults[0].Line, 1) << source;
        EXPECT_NE(read.Faults[0].Text.find(fault), std::string::npos) << read.Faults[0].Text;
    }
}

TEST(Cases, WhatDoesNotHoldIsFoundWithItsLine) {
    const auto machine = std::make_unique<m8085::MachineState>();
    machine->TStates = 108;
    machine->Memory[0x9001] = 0x2A;
    const cases::Cases read = cases::ReadCases(
        "; given A=05, hl=9000\n; gives A=05, 9000=00,2B, T-states <= 108\n"
        "; gives 107 T-states, 9000-9001=2A, T-states <= 107, 108 t-states\n"
        "; gives T-states >= 108, tstates>=109");
    for (const auto& [line, claim] : read.All.at(0).Given) claim.Store(*machine);
    std::string found;
    for (const cases::Failure& failure : cases::Judge(read.All[0], *machine))
        found +=
            std::to_string(failure.Expected.Line) + ' ' + failure.Expected.What.Text() + ": " + failure.Found + '\n';
    EXPECT_EQ(found,
              "2 9000=00,2B: 00,2A\n3 107 T-states: 108\n3 9000-9001=2A: 00,2A\n3 T-states <= 107: 108\n4 "
              "tstates>=109: 108\n");
    EXPECT_EQ(machine->H, 0x90);
}

TEST(Cases, AreJudgedWhereWhatIsGivenWasThere) {
    constexpr std::string_view program =
        "; gives SP=FFF0, 12 T-states\n"
        "; given [list] list.dat, 9000=05, B=1\n; gives A=05, 9000-9003=05,06,07,08, CY=1, port 10=00, hl=0\n; gives "
        "A=3\n"
        "; given [another] list.dat\n; gives A=05\n"
        "; given B=01, port 10=07\n; gives A=04\n"
        "; given none.dat\n; gives A=04\n"
        "; given [no place] X=01\n; gives A=04\n"
        "; given B=1\n; gives A=3\n; gives Y=1\n; given A=zz";
    const auto load = [](const std::string& name, m8085::MemoryBytes& memory) {
        std::ranges::copy(std::array{4, 6, 7}, memory.begin() + 0x9000);
        return name == "list.dat";
    };
    const auto before = std::make_unique<m8085::MachineState>();
    load({}, before->Memory);
    before->Memory[0x9000] = 5;
    before->B = 1;
    const auto after = std::make_unique<m8085::MachineState>(*before);
    after->A = 3;
    after->L = 2;
    after->SP = 0xFFF0;
    after->TStates = 13;
    std::string text;
    for (const cases::Verdict& verdict : cases::VerdictsOf(program, *before, *after, load))
        text += std::to_string(verdict.Line) + "+~-"[int(verdict.What)] + verdict.Text.substr(0, 60) + '\n';
    EXPECT_EQ(text,
              "1-13 T-states\n"
              "2+held\n3-A is 03, 9003 is 00, CY is 0, HL is 0002\n4+held\n"
              "5~9000 was 05, so not tried\n"
              "7~port 10 was 00, so not tried\n"
              "9~there is no data file none.dat beside the program\n"
              "11-\"X\" is not a register (A to L, F), flag (S, Z, AC, P, CY), p\n"
              "13+held\n14+held\n15-\"Y\" is not a register (A to L, F), flag (S, Z, AC, P, CY), p\n"
              "16-\"A=zz\": a value of A is hexadecimal, from 0 to FF; no gives \n");
}

}  // namespace
