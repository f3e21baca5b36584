; Lab 5, multiplication
;
; Aim
;   Multiply two bytes on a chip that can only
;   add. First make it right. Then make it fast,
;   for the last case allows no more than 1000
;   T-states.
; Before
;   9000  the first factor
;   9001  the second factor
; After
;   9100  the low byte of the product
;   9101  the high byte of the product
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

; Your program

    HLT

; Hint
;   Put the first factor into DE, with D 0, and
;   add DE to HL as often as the second factor
;   says. Mind a second factor of 0.
;
;   To be fast, multiply as on paper. There one
;   goes through the digits of the second
;   factor. Here the digits are bits, as those
;   of lab 4. For each bit, from the highest on,
;   double HL with DAD H, and add DE if the bit
;   is 1.
