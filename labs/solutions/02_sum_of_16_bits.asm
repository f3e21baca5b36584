; Lab 2, the sum of two 16-bit numbers, solved
;
; DAD adds sixteen bits at once, and its carry
; is CY. MVI leaves CY alone, so ACI still finds
; it.
;
; given [1234 and 1111] 9000=34,12,11,11
; gives 9100=45,23,00
; given [from low to high] 9000=FF,00,01,00
; gives 9100=00,01,00
; given [one too large] 9000=FF,FF,01,00
; gives 9100=00,00,01
; given [the largest sum] 9000=FF,FF,FF,FF
; gives 9100=FE,FF,01
; given [old bits] 9000=0,80,FF,7F, 9102=55, CY=1
; gives 9100=FF,FF,00

    LHLD 9000  ; HL is the first number
    XCHG       ; now DE is
    LHLD 9002  ; HL is the second one
    DAD D      ; HL is the sum, CY its carry
    SHLD 9100
    MVI A,0
    ACI 0      ; A is 0 and CY
    STA 9102
    HLT
