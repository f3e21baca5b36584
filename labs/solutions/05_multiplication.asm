; Lab 5, multiplication, solved
;
; Eight rounds are enough for any two bytes, one
; for each bit of the second factor.
;
;   A   the second factor, rotated
;   C   the rounds to go
;   DE  the first factor
;   HL  the product so far
;
; given [6 times 7] 9000=06,07
; gives 9100=2A,00
; given [a product of two bytes] 9000=C8,7B
; gives 9100=18,60
; given [times nothing] 9000=7B,00, 9100=55,55
; gives 9100=00,00
; given [nothing times] 9000=00,7B, 9100=55,55
; gives 9100=00,00
; given [the largest product] 9000=FF,FF
; gives 9100=01,FE
; given [fast] 9000=FE,FD
; gives 9100=06,FB, T-states <= 1000

    LHLD 9000  ; the first factor is L
    MOV A,H    ; the second one is H
    MOV E,L
    MVI D,0
    LXI H,0
    MVI C,8
BIT:
    DAD H      ; double what is there
    RLC        ; the next bit goes to CY
    JNC ZERO
    DAD D      ; it is a 1
ZERO:
    DCR C
    JNZ BIT
    SHLD 9100
    HLT
