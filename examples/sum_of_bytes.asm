; Sum of bytes
;
; Adds the five bytes at 9000 to 9004. The sum
; can be more than FF, the most that a byte
; holds, so it takes two bytes. 9100 gets the
; low byte, 9101 the high byte. All numbers in a
; program are hexadecimal.

; Put five numbers into memory. Try others in
; their place.
    LXI H,9000 ; HL points to the first byte
    MVI M,8A   ; M is the byte that HL points to
    INX H      ; HL points to the next byte
    MVI M,3C
    INX H
    MVI M,0F0  ; a zero in front does no harm
    INX H
    MVI M,25
    INX H
    MVI M,61

; Add them up.
    LXI H,9000 ; back to the first byte
    MVI C,5    ; C counts the bytes to add
    MVI B,0    ; B is the high byte of the sum
    MVI A,0    ; A is the low byte
NEXT:
    ADD M      ; the byte is added to A
    JNC FITS   ; no carry, the sum fits
    INR B      ; a carry, the high byte grows by 1
FITS:
    INX H      ; on to the next byte
    DCR C      ; one less to go
    JNZ NEXT   ; not zero yet, so go on

; Store the sum.
    STA 9100   ; the low byte
    MOV A,B
    STA 9101   ; the high byte
    HLT        ; 9100 is 3C and 9101 is 02

; gives 9100=3C,02
