; Lab 8, a block move that makes room
;
; Aim
;   Move bytes to a place that overlaps the old
;   one. A new number becomes the first of a
;   list, so all others move up by one place.
; Before
;   9000  how many numbers the list has
;   9001  the first of them, and so on
;   9100  the new number
; After
;   9000  how many numbers the list has now
;   9001  the new number, and then the old ones
;
; given [three] 9000=3,11,22,33,44,EE, 9100=05
; gives 9000=04,05,11,22,33,EE
; given [one number] 9000=01,11,22,EE, 9100=05
; gives 9000=02,05,11,EE
; given [all the same] 9000=2,7,7,EE,EE, 9100=07
; gives 9000=03,07,07,07,EE
; given [an empty list] 9000=00,77,EE, 9100=05
; gives 9000=01,05,EE

; Your program

    HLT

; Hint
;   Draw the list as a row of boxes. If the
;   first number moves first, it overwrites the
;   second one. So begin with the last. Its
;   address is 9000 plus the number at 9000, and
;   DAD B adds BC to HL.
;
;   examples/block_move.asm copies bytes to a
;   place that does not overlap.
