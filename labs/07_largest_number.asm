; Lab 7, the largest number and its place
;
; Aim
;   Go through a list with a pointer.
; Before
;   9000  how many numbers the list has
;   9001  the first of them, and so on
; After
;   9100  the largest number
;   9101  the low byte of its address
;   9102  the high byte
;   The first place counts if there are several.
;   An empty list leaves 00 in all three.
;
; given [five numbers] 9000=05,11,07,2A,03,19
; gives 9100=2A,03,90
; given [the first one] 9000=03,FF,10,00
; gives 9100=FF,01,90
; given [the last one] 9000=03,01,7F,80
; gives 9100=80,03,90
; given [twice the same] 9000=04,05,60,60,01
; gives 9100=60,02,90
; given [one number] 9000=01,00,63
; gives 9100=00,01,90
; given [no number] 9000=00,63, 9100=55,55,55
; gives 9100=00,00,00

; Your program

    HLT

; Hint
;   MOV A,M and CMP M work on the byte that HL
;   points to, INX H moves on. Take the first
;   number as the largest so far, and keep its
;   address in DE. Then look at the others.
;
;   The guide has a lab that finds the largest
;   number. Here the place is wanted as well.
