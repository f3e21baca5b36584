; Addition of packed decimal numbers
;
; A packed decimal byte holds two decimal
; digits, so 46 stands for forty-six. Four bytes
; hold eight digits, the last two digits first.
; The program adds the number at 9000 to 9003 to
; the one at 9100 to 9103, where the sum then
; stands. 9104 gets the carry, which is the
; ninth digit.

; Put the numbers 19283746 and 87654329 into
; memory.
    LXI H,3746 ; SHLD stores the low byte first,
    SHLD 9000  ; so 9000 gets 46 and 9001 gets 37
    LXI H,1928
    SHLD 9002
    LXI H,4329
    SHLD 9100
    LXI H,8765
    SHLD 9102

; Add them byte by byte, from the last digits to
; the first.
    LXI H,9000 ; HL points into the first number
    LXI D,9100 ; DE into the second
    MVI C,4    ; C counts the bytes
    ORA A      ; sets CY to 0, A stays as it is
BYTE:
    LDAX D     ; a byte of the second number
    ADC M      ; plus one of the first, and CY
    DAA        ; makes the sum decimal
    STAX D     ; it replaces the second one
    INX H      ; INX and DCR leave CY as it is,
    INX D      ; so the next ADC finds it
    DCR C
    JNZ BYTE

; Store the carry.
    MVI A,0
    RAL        ; moves CY into the lowest bit of A
    STA 9104
    HLT        ; 75 80 93 06 01, that is 106938075

; gives 9100=75,80,93,06,01
