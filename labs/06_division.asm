; Lab 6, division
;
; Aim
;   Divide by subtracting, and stop in time.
; Before
;   9000  the number to be divided
;   9001  the number to divide it by
; After
;   9100  how many times it goes
;   9101  the remainder
;   If the divisor is 0 there is no answer, and
;   both are FF.
;
; given [64 by 0A] 9000=64,0A
; gives 9100=0A,00
; given [with a remainder] 9000=17,05
; gives 9100=04,03
; given [the same number] 9000=07,07
; gives 9100=01,00
; given [by a larger one] 9000=03,07
; gives 9100=00,03
; given [the longest way] 9000=FF,01
; gives 9100=FF,00
; given [nothing] 9000=00,05, 9100=55,55
; gives 9100=00,00
; given [by 0] 9000=2A,00
; gives 9100=FF,FF

; Your program

    HLT

; Hint
;   CMP B compares A with B and leaves both as
;   they are. CY is then 1 if A is below B, and
;   it is time to stop. Before the loop, find
;   out whether the divisor is 0. ORA A sets Z
;   from A.
