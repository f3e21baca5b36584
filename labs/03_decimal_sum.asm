; Lab 3, the sum of two decimal numbers
;
; Aim
;   Add numbers as people write them. In a
;   packed decimal byte each half is a decimal
;   digit, so 27 stands for twenty-seven.
; Before
;   9000  the first number, 00 to 99
;   9001  the second number, 00 to 99
; After
;   9100  the last two digits of the sum
;   9101  its hundreds, 00 or 01
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

; Your program

    HLT

; Hint
;   ADD works in hexadecimal. DAA, right after
;   it, makes the sum in A decimal, and CY is
;   then the carry to the hundreds.
