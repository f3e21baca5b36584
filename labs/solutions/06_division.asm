; Lab 6, division, solved
;
;   A  what is left to divide
;   B  the divisor
;   C  how many times it went
;
; With a divisor of 0 the loop would never end,
; so that is found out first.
;
; given [64 by 0A] 9000=64,0A
; gives 9100=0A,00
; given [with a remainder] 9000=17,05
; gives 9100=04,03
; given [the same number] 9000=07,07
; gives 9100=01,00
; given [by a larger one] 9000=03,07
; gives 9100=00,03
; given [the longest way] 9000=FF,01
; gives 9100=FF,00
; given [nothing] 9000=00,05, 9100=55,55
; gives 9100=00,00
; given [by 0] 9000=2A,00
; gives 9100=FF,FF

    LDA 9001
    ORA A      ; sets Z if the divisor is 0
    JZ ZERO
    MOV B,A
    MVI C,0
    LDA 9000
TEST:
    CMP B      ; CY if A is below B
    JC DONE    ; it goes no more
    SUB B
    INR C
    JMP TEST
DONE:
    STA 9101   ; what is left is the remainder
    MOV A,C
    STA 9100
    HLT
ZERO:
    LXI H,0FFFF
    SHLD 9100  ; FF goes to both
    HLT
