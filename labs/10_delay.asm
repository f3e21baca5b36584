; Lab 10, a delay
;
; Aim
;   Let the program wait for a time that is
;   known. A T-state takes 0.325 microseconds,
;   so that 3077 of them make a millisecond.
;   Work it out on paper before you run it.
; Before
;   9000  how many milliseconds to wait
; After
;   9100  FF as a sign that the time is over
;   The program may be late, by at most two
;   parts in a hundred and 100 T-states. It is
;   never early.
;
; given [1 millisecond] 9000=01
; gives 9100=FF
; gives T-states >= 3077, T-states <= 3238
; given [10 milliseconds] 9000=0A
; gives 9100=FF
; gives T-states >= 30770, T-states <= 31485
; given [255 milliseconds] 9000=FF
; gives 9100=FF
; gives T-states >= 784635, T-states <= 800427
; given [no time at all] 9000=00
; gives 9100=FF, T-states <= 100

; Your program

    HLT

; Hint
;   DCR C and JNZ take 14 T-states together. How
;   often does that fit into 3077? That is the
;   inner loop. An outer one counts the
;   milliseconds, and its own T-states count as
;   well. A loop that tests at its end runs once
;   at least, so 0 needs a test before it.
