; Bubble sort
;
; Sorts the eight numbers at 9000 to 9007, the
; smallest first. A pass compares each number
; with its neighbour and swaps the two if they
; stand in the wrong order. So the largest
; number moves up to the end like a bubble, and
; the next pass can be shorter by one. Keep F8
; pressed to watch it.

; Put eight numbers into memory. Try others in
; their place.
    LXI H,9000
    MVI M,42
    INX H
    MVI M,0FF
    INX H
    MVI M,7
    INX H
    MVI M,99
    INX H
    MVI M,42
    INX H
    MVI M,0
    INX H
    MVI M,80
    INX H
    MVI M,13

; Eight numbers have seven pairs of neighbours.
    MVI C,7    ; C is the pairs in a pass
PASS:
    LXI H,9000 ; start at the first number
    MOV B,C    ; B counts the pairs to come
PAIR:
    MOV A,M    ; A is the left number of the pair
    INX H      ; HL points to the right one
    CMP M      ; compare, A stays as it is
    JC ORDERED ; CY if the left is smaller
    JZ ORDERED ; Z if both are equal
    MOV D,M    ; swap, D keeps the right one
    MOV M,A    ; the left one goes to the right
    DCX H
    MOV M,D    ; and the right one to the left
    INX H
ORDERED:
    DCR B
    JNZ PAIR   ; more pairs in this pass
    DCR C
    JNZ PASS   ; more passes, ever shorter
    HLT        ; 00 07 13 42 42 80 99 FF

; gives 9000=00,07,13,42,42,80,99,FF
