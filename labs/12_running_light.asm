; Lab 12, a running light
;
; Aim
;   Show a pattern at a port, and let it change
;   with time. Think of eight lamps at port 02,
;   one for each bit, and of one that is lit. It
;   moves one place to the left at each step,
;   and from the left end on to the right end.
; Before
;   port 01  how many steps to go
; After
;   port 02  the last pattern, after 01, 02, 04
;            and so on
;   Each pattern but the last stays for a
;   millisecond, 3077 T-states, or a little
;   longer.
;
; given [three steps] port 01=03
; gives port 02=08, T-states >= 9231
; gives T-states <= 10000
; given [once round] port 01=08
; gives port 02=01, T-states >= 24616
; given [as many as possible] port 01=FF
; gives port 02=80, T-states >= 784635
; given [no step] port 01=00
; gives port 02=01, T-states <= 200

; Your program

    HLT

; Hint
;   RLC moves all bits of A one place to the
;   left, and the highest one to the right end.
;   Make the delay of lab 10 a subroutine. Which
;   registers does it use, and which do you need
;   after it?
;
;   With Slow Run you can see the light move.
;   The ports are the last column of the memory
;   panel.
