; Lab 4, counting the bits that are 1
;
; Aim
;   Write a loop, and look at a byte bit by bit.
; Before
;   9000  a byte
; After
;   9100  how many of its bits are 1, 00 to 08
;   9000  the same byte as before
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

; Your program

    HLT

; Hint
;   RLC moves the highest bit of A to CY, and
;   JNC jumps if it is 0. Let one register count
;   the eight rounds down, and another one the
;   ones up. Write on paper which register holds
;   what.
