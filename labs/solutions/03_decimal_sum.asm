; Lab 3, the sum of two decimal numbers, solved
;
; 15 and 27 are 3C in hexadecimal. DAA adds 6 to
; a digit that has gone beyond 9, which makes
; 42.
;
; given [no carry at all] 9000=12,34
; gives 9100=46,00
; given [a carry to the tens] 9000=15,27
; gives 9100=42,00
; given [a carry to the hundreds] 9000=60,70
; gives 9100=30,01
; given [both] 9000=99,99
; gives 9100=98,01
; given [just a hundred] 9000=01,99
; gives 9100=00,01
; given [nothing] 9000=00,00, 9100=55,55
; gives 9100=00,00

    LDA 9000   ; the first number
    MOV B,A
    LDA 9001   ; the second number
    ADD B      ; the sum, in hexadecimal
    DAA        ; in decimal, CY is the hundred
    STA 9100
    MVI A,0    ; leaves CY as it is
    RAL        ; moves CY into the lowest bit
    STA 9101
    HLT
