; Lab 4, counting the bits that are 1, solved
;
;   A  the byte, rotated
;   B  the ones so far
;   C  the rounds to go
;
; given [some bits] 9000=A5
; gives 9100=04, 9000=A5
; given [all bits] 9000=FF
; gives 9100=08
; given [the highest bit] 9000=80
; gives 9100=01
; given [the lowest bit] 9000=01
; gives 9100=01
; given [no bit, an old value] 9000=00, 9100=55
; gives 9100=00

    LDA 9000
    MVI B,0
    MVI C,8    ; a byte has eight bits
BIT:
    RLC        ; the next bit goes to CY
    JNC ZERO
    INR B      ; it is a 1
ZERO:
    DCR C
    JNZ BIT
    MOV A,B
    STA 9100
    HLT
