; Multiplication of two bytes
;
; The 8085 can add but not multiply. This
; program multiplies the bytes at 9000 and 9001
; the way you do on paper, digit by digit, only
; that the digits are bits. The product takes
; two bytes, 9100 the low one and 9101 the high
; one.

; Put the two factors into memory, C8 times 7B.
    LXI H,9000
    MVI M,0C8  ; 200 in decimal
    INX H
    MVI M,7B   ; 123 in decimal

; Fetch them.
    LXI H,9000
    MOV E,M    ; DE is the first factor
    MVI D,0
    INX H
    MOV A,M    ; A is the second factor

; Multiply. The bits of A are looked at from the
; left.
    LXI H,0    ; HL is the product so far
    MVI C,8    ; C counts the bits still to come
BIT:
    DAD H      ; HL doubles for each digit
    RLC        ; the next bit of A goes to CY
    JNC ZERO   ; it is 0, nothing to add
    DAD D      ; it is 1, so add the first factor
ZERO:
    DCR C
    JNZ BIT
    SHLD 9100  ; L goes to 9100, H to 9101
    HLT        ; 6018, which is 24600 in decimal

; gives 9100=18,60
