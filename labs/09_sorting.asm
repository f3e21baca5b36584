; Lab 9, sorting
;
; Aim
;   Put one loop into another, and sort a list.
; Before
;   9000  how many numbers the list has
;   9001  the first of them, and so on
; After
;   9001  the same numbers, the largest first
;   The byte after the list stays as it is.
;
; given [five numbers] 9000=05,42,07,FF,00,13
; gives 9001=FF,42,13,07,00
; given [two the same] 9000=04,42,13,42,07
; gives 9001=42,42,13,07
; given [the smallest first] 9000=04,01,02,03,80
; gives 9001=80,03,02,01
; given [in order already] 9000=03,30,20,10,EE
; gives 9001=30,20,10,EE
; given [two numbers] 9000=02,11,22,EE
; gives 9001=22,11,EE
; given [one number] 9000=01,2A,EE
; gives 9001=2A,EE
; given [no number] 9000=00,2A,EE
; gives 9001=2A,EE

; Your program

    HLT

; Hint
;   The inner loop compares each number with its
;   neighbour, and swaps the two if they stand
;   in the wrong order. After it the smallest
;   number is the last one. How often must that
;   be done, and how many neighbours are there
;   each time? Look at lists of two and of three
;   first.
;
;   examples/bubble_sort.asm sorts a list of
;   fixed length the other way round.
