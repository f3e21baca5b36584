; Lab 2, the sum of two 16-bit numbers
;
; Aim
;   Add numbers that are too large for a byte.
;   Each takes two bytes, the low one first.
; Before
;   9000  the low byte of the first number
;   9001  its high byte
;   9002  the low byte of the second one
;   9003  its high byte
; After
;   9100  the low byte of the sum
;   9101  the high byte of the sum
;   9102  01 if the sum is above FFFF, else 00
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

; Your program

    HLT

; Hint
;   LHLD fetches two bytes at once, XCHG makes
;   room in HL for the other number, and DAD D
;   adds. The only flag that DAD sets is CY. MVI
;   leaves it as it is, and ACI 0 adds it to A.
