inherited Root: TFXGraph [3]
  Int = -42
  Hex = 255
  Float = 2.500000000000000000E-30
  Text = 'it''s'#13#10'Grüße €'
  Long =
    'A text longer than one part of sixty-four bytes is split after '#10 +
    'line feeds and every sixty-four bytes, never inside a character.'
  Flag = True
  Style = [fsBold, fsItalic]
  P = <
    item
      Name = 'a'
      Data = (
        1
        (
          2))
    end
    item
    end>
  Q = (
    <>
    ()
    [a, b]
    {}
    Graph1.Jaehne1.OutputPin)
  B = {
    000102030405060708090A0B0C0D0E0F101112131415161718191A1B1C1D1E1F
    2021}
  inline Frame1: TFrame1
  end
end
