; Block move
;
; Copies the 10 bytes at 9000 to 9100. 10 is
; hexadecimal, like every number here, so these
; are sixteen bytes.

; Fill the source with 1, 2, 3 and so on, to
; have something to copy.
    LXI H,9000 ; HL points to the first byte
    MVI C,10   ; C counts the bytes to fill
    MVI A,1    ; the first number
FILL:
    MOV M,A    ; store it where HL points to
    INX H      ; on to the next byte
    INR A      ; and to the next number
    DCR C
    JNZ FILL   ; until C is zero

; Copy. HL points into the source, DE into the
; destination.
    LXI H,9000
    LXI D,9100
    MVI C,10   ; count again
COPY:
    MOV A,M    ; take a byte from the source
    STAX D     ; store A where DE points to
    INX H      ; move both pointers on
    INX D
    DCR C
    JNZ COPY
    HLT        ; 9100 to 910F now read 01 to 10

; gives 9100=1,2,3,4,5,6,7,8,9,A,B,C,D,E,F,10,0
